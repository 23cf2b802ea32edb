#include "ui/AccessibleNames.h"

#include "i18n/LanguageName.h"

namespace Quorlin {

const AccessibleNames &AccessibleNames::in(const QString &language)
{
    static const AccessibleNames english{QStringLiteral("Close"),
                                         QStringLiteral("Help"),
                                         QStringLiteral("Minimise"),
                                         QStringLiteral("Documents"),
                                         QStringLiteral("Progress"),
                                         QStringLiteral("Web site of Adobe"),
                                         QStringLiteral("Web site of Varnex Software")};
    static const AccessibleNames german{QStringLiteral("Schließen"),
                                        QStringLiteral("Hilfe"),
                                        QStringLiteral("Minimieren"),
                                        QStringLiteral("Dokumente"),
                                        QStringLiteral("Fortschritt"),
                                        QStringLiteral("Website von Adobe"),
                                        QStringLiteral("Website von Varnex Software")};
    static const AccessibleNames french{QStringLiteral("Fermer"),
                                        QStringLiteral("Aide"),
                                        QStringLiteral("Réduire"),
                                        QStringLiteral("Documents"),
                                        QStringLiteral("Progression"),
                                        QStringLiteral("Site web d’Adobe"),
                                        QStringLiteral("Site web de Varnex Software")};
    if (language == LanguageName::German)
        return german;
    return language == LanguageName::French ? french : english;
}

} // namespace Quorlin
