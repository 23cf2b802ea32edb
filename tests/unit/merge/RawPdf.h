#pragma once

#include <QByteArray>

#include <vector>

/// PDF files written by hand, for structures that a library would not write.
namespace Quorlin::RawPdf {

/// A PDF file from the texts of its objects 1, 2, …; object 1 is the catalog.
[[nodiscard]] QByteArray fileOf(const std::vector<QByteArray> &objects);

/// The text of a stream object without a filter.
[[nodiscard]] QByteArray stream(const QByteArray &data);

} // namespace Quorlin::RawPdf
