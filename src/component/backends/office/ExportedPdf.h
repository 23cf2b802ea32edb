#pragma once

#include <QString>

namespace Quorlin {

/// A look at the PDF that the engine says it has written.
struct ExportedPdf
{
    bool whole = false; ///< it is there, begins as a PDF does and has its end
    int pages = -1;     ///< -1: not told

    [[nodiscard]] static ExportedPdf look(const QString &path);
};

} // namespace Quorlin
