#include "component/backends/office/ExportedPdf.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr qsizetype TailSize = 1024;

/// The page count in the root of the page tree, which this engine writes near the end of the
/// file and never compressed.
int pagesIn(const QByteArray &pdf)
{
    const auto root = pdf.lastIndexOf("/Type/Pages");
    const auto end = root < 0 ? -1 : pdf.indexOf("endobj", root);
    const QByteArray key("/Count ");
    const auto count = end < 0 ? -1 : pdf.lastIndexOf(key, end);
    if (count < root)
        return -1;
    auto digits = count + key.size();
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
    const auto pdf = QByteArray::fromRawData(bytes, size);
    const auto tail = pdf.last(std::min(size, TailSize));
    return {pdf.startsWith("%PDF-") && tail.contains("%%EOF"), pagesIn(pdf)};
}

} // namespace Quorlin
