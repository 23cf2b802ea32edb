#include "convert/ReasonTexts.h"

namespace Quorlin {

QString ReasonTexts::sentence(Reason reason) const
{
    const auto text = reasonText(reason);
    return text.left(1).toUpper() + text.mid(1) + QLatin1Char('.');
}

QString ReasonTexts::advice(Reason reason) const
{
    return reasonAdvice(reason);
}

QString ReasonTexts::introduce(const QString &detail) const
{
    return QStringLiteral("Detail: ") + detail;
}

QString ReasonTexts::more(qsizetype count) const
{
    return QStringLiteral("… and %1 more").arg(count);
}

} // namespace Quorlin
