#include "ui/DocumentFilter.h"

#include "convert/PDFLib.h"
#include "winsupport/TextSource.h"

#include <algorithm>
#include <array>

namespace Quorlin::DocumentFilter {

namespace {

/// In the order of the families.
constexpr std::array Descriptions{"DialogAllValidExtension", "DialogWordExtension",
                                  "DialogExcelExtension", "DialogPowerpointExtension",
                                  "DialogPDFExtension"};

QString patterns(const QStringList &extensions)
{
    return QStringLiteral("*.") + extensions.join(QLatin1String(";*."));
}

} // namespace

QString text(const TextSource &texts)
{
    QList<QStringList> extensions;
    for (const auto family :
         {Family::All, Family::Word, Family::Excel, Family::PowerPoint, Family::Pdf})
        extensions.append(PDFLib::extensions(family));
    return text(texts, extensions);
}

QString text(const TextSource &texts, const QList<QStringList> &extensions)
{
    QStringList parts;
    const auto count = std::min(extensions.size(), qsizetype(Descriptions.size()));
    for (qsizetype family = 0; family < count; ++family) {
        if (extensions.at(family).isEmpty())
            continue;
        parts.append(texts.text(QLatin1String(Descriptions.at(std::size_t(family)))));
        parts.append(patterns(extensions.at(family)));
    }
    return parts.join(QLatin1Char('|'));
}

QStringList toolkitFilters(const QString &filter)
{
    const auto parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype at = 0; at < parts.size(); at += 2) {
        const auto matched = parts.value(at + 1).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        const auto all = matched.isEmpty() ? QStringLiteral("*") : matched.join(QLatin1Char(' '));
        filters.append(QStringLiteral("%1 (%2)").arg(parts.at(at), all));
    }
    return filters;
}

} // namespace Quorlin::DocumentFilter
