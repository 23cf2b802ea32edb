#pragma once

#include <QString>

namespace Quorlin::PdfFile {

/// Whether the file begins and ends like a whole PDF. Its inside is not looked at.
[[nodiscard]] bool looksWhole(const QString &path);

} // namespace Quorlin::PdfFile
