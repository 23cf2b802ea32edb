#include "support/Reports.h"

#include <QJsonArray>

namespace Quorlin {

QList<QJsonObject> Reports::of(const char *type, int job) const
{
    QList<QJsonObject> found;
    for (const auto &message : m_messages)
        if (message.value(QLatin1String("type")).toString() == QLatin1String(type) &&
            (job < 0 || message.value(QLatin1String("job")).toInt(-1) == job))
            found.append(message);
    return found;
}

QJsonObject Reports::last(const char *type, int job) const
{
    const auto found = of(type, job);
    return found.isEmpty() ? QJsonObject() : found.last();
}

bool Reports::has(const char *type, int job) const
{
    return !of(type, job).isEmpty();
}

QString Reports::outline() const
{
    QStringList types;
    for (const auto &message : m_messages) {
        const auto type = message.value(QLatin1String("type")).toString();
        if (types.isEmpty() || types.last() != type)
            types.append(type);
    }
    return types.join(QLatin1Char(' '));
}

QStringList Reports::failures(int job) const
{
    QStringList found;
    for (const auto &message : of("failure", job))
        found.append(QStringLiteral("%1:%2")
                         .arg(message.value(QLatin1String("index")).toInt())
                         .arg(message.value(QLatin1String("reason")).toString()));
    return found;
}

QStringList Reports::outputs(int job) const
{
    QStringList found;
    for (const auto &file : last("complete", job).value(QLatin1String("outputs")).toArray())
        found.append(file.toString());
    return found;
}

QList<int> Reports::percents(int job) const
{
    QList<int> found;
    for (const auto &message : of("progress", job))
        found.append(message.value(QLatin1String("percent")).toInt());
    return found;
}

} // namespace Quorlin
