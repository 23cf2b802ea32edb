#include "ui/AccessibleNames.h"

namespace Quorlin {

const AccessibleNames &AccessibleNames::in(const QString &language)
{
    static const AccessibleNames english{QStringLiteral("Close"), QStringLiteral("Help"),
                                         QStringLiteral("Minimise"), QStringLiteral("Documents"),
                                         QStringLiteral("Progress")};
    static const AccessibleNames german{QStringLiteral("Schließen"), QStringLiteral("Hilfe"),
                                        QStringLiteral("Minimieren"), QStringLiteral("Dokumente"),
                                        QStringLiteral("Fortschritt")};
    static const AccessibleNames french{QStringLiteral("Fermer"), QStringLiteral("Aide"),
                                        QStringLiteral("Réduire"), QStringLiteral("Documents"),
                                        QStringLiteral("Progression")};
    if (language == QLatin1String("deutsch"))
        return german;
    return language == QStringLiteral("français") ? french : english;
}

} // namespace Quorlin
