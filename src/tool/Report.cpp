#include "tool/Report.h"

#include "tool/FileNames.h"

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

QString statusOf(const DocumentRecord &document, bool dryRun)
{
    if (document.failed())
        return QStringLiteral("failed");
    return dryRun ? QStringLiteral("planned") : QStringLiteral("converted");
}

QJsonObject entryOf(const DocumentRecord &document, bool dryRun)
{
    QJsonObject entry{{QStringLiteral("input"), FileNames::legible(document.input)},
                      {QStringLiteral("output"), pathOrNull(document.output)},
                      {QStringLiteral("seconds"), rounded(document.seconds)},
                      {QStringLiteral("status"), statusOf(document, dryRun)}};
    if (document.failed()) {
        entry.insert(QStringLiteral("reason"), reasonKey(document.reason));
        entry.insert(QStringLiteral("code"), static_cast<int>(document.reason));
        entry.insert(QStringLiteral("text"), reasonText(document.reason));
        entry.insert(QStringLiteral("advice"), reasonAdvice(document.reason));
        if (!document.detail.isEmpty())
            entry.insert(QStringLiteral("detail"), document.detail);
    }
    return entry;
}

} // namespace

int Report::failures() const
{
    return static_cast<int>(std::ranges::count_if(documents, &DocumentRecord::failed));
}

QJsonObject Report::totals() const
{
    const auto count = static_cast<int>(documents.size());
    const auto through = count - failures();
    QJsonObject totals{{QStringLiteral("documents"), count},
                       {QStringLiteral("converted"), dryRun ? 0 : through},
                       {QStringLiteral("failed"), failures()},
                       {QStringLiteral("seconds"), rounded(seconds)}};
    if (dryRun)
        totals.insert(QStringLiteral("planned"), through);
    return totals;
}

QByteArray Report::toJson() const
{
    QJsonArray entries;
    for (const auto &document : documents)
        entries.append(entryOf(document, dryRun));
    QJsonObject report{{QStringLiteral("report"), ReportVersion},
                       {QStringLiteral("version"), QStringLiteral(QUORLIN_VERSION)},
                       {QStringLiteral("quality"), quality},
                       {QStringLiteral("documents"), entries},
                       {QStringLiteral("totals"), totals()}};
    if (dryRun)
        report.insert(QStringLiteral("dryRun"), true);
    if (merges)
        report.insert(QStringLiteral("merged"), pathOrNull(mergedFile));
    return QJsonDocument(report).toJson(QJsonDocument::Indented);
}

} // namespace Quorlin
