#include "convert/JobLimits.h"

namespace Quorlin {

QJsonObject JobLimits::toJson() const
{
    QJsonObject limits;
    if (stall.count() > 0)
        limits.insert(QStringLiteral("stall"), static_cast<qint64>(stall.count()));
    if (total.count() > 0)
        limits.insert(QStringLiteral("total"), static_cast<qint64>(total.count()));
    if (memory > 0)
        limits.insert(QStringLiteral("memory"), memory);
    if (atOnce > 0)
        limits.insert(QStringLiteral("atOnce"), atOnce);
    return limits;
}

} // namespace Quorlin
