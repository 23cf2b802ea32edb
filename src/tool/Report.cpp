#include "tool/Report.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace Quorlin {

namespace {

constexpr int ReportVersion = 1;

/// Milliseconds are exact enough for people, and keep the numbers short.
double rounded(double seconds)
{
    return std::round(seconds * 1000.0) / 1000.0;
}

QJsonValue pathOrNull(const QString &path)
{
    return path.isEmpty() ? QJsonValue() : QJsonValue(path);
}

QJsonObject entryOf(const DocumentRecord &document)
{
    QJsonObject entry{{QStringLiteral("input"), document.input},
                      {QStringLiteral("output"), pathOrNull(document.output)},
                      {QStringLiteral("seconds"), rounded(document.seconds)},
                      {QStringLiteral("status"),
                       document.failed() ? QStringLiteral("failed") : QStringLiteral("converted")}};
    if (document.failed()) {
        entry.insert(QStringLiteral("reason"), reasonKey(document.reason));
        entry.insert(QStringLiteral("text"), document.text);
    }
    return entry;
}

} // namespace

int Report::failures() const
{
    return static_cast<int>(std::ranges::count_if(documents, &DocumentRecord::failed));
}

QByteArray Report::toJson() const
{
    QJsonArray entries;
    for (const auto &document : documents)
        entries.append(entryOf(document));
    const auto count = static_cast<int>(documents.size());
    const QJsonObject totals{{QStringLiteral("documents"), count},
                             {QStringLiteral("converted"), count - failures()},
                             {QStringLiteral("failed"), failures()},
                             {QStringLiteral("seconds"), rounded(seconds)}};
    QJsonObject report{{QStringLiteral("report"), ReportVersion},
                       {QStringLiteral("version"), QStringLiteral(QUORLIN_VERSION)},
                       {QStringLiteral("quality"), quality},
                       {QStringLiteral("documents"), entries},
                       {QStringLiteral("totals"), totals}};
    if (merges)
        report.insert(QStringLiteral("merged"), pathOrNull(mergedFile));
    return QJsonDocument(report).toJson(QJsonDocument::Indented);
}

} // namespace Quorlin
