#include "component/backends/office/ExportedPdf.h"

#include <QFile>

#include <algorithm>
#include <string_view>

namespace Quorlin {

namespace {

constexpr std::size_t TailSize = 1024;

/// The page count in the root of the page tree, which this engine writes near the end of the
/// file and never compressed.
int pagesIn(std::string_view pdf)
{
    constexpr std::string_view Key = "/Count ";
    const auto root = pdf.rfind("/Type/Pages");
    const auto end = root == pdf.npos ? pdf.npos : pdf.find("endobj", root);
    const auto count = end == pdf.npos ? pdf.npos : pdf.rfind(Key, end);
    if (count == pdf.npos || count < root)
        return -1;
    auto digits = count + Key.size();
    int pages = 0;
    for (; digits < end && pages < 10'000'000 && pdf[digits] >= '0' && pdf[digits] <= '9'; ++digits)
        pages = pages * 10 + (pdf[digits] - '0');
    return pages;
}

} // namespace

ExportedPdf ExportedPdf::look(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
        return {};
    const auto size = file.size();
    const auto *bytes = reinterpret_cast<const char *>(file.map(0, size));
    if (!bytes)
        return {};
    // Searched backwards by the toolkit, the byte before the mapping would be read.
    const std::string_view pdf(bytes, static_cast<std::size_t>(size));
    const auto tail = pdf.substr(pdf.size() - std::min(pdf.size(), TailSize));
    return {pdf.starts_with("%PDF-") && tail.find("%%EOF") != pdf.npos, pagesIn(pdf)};
}

} // namespace Quorlin
