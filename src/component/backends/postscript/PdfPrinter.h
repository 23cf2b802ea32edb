#pragma once

#include "component/backends/postscript/PdfToPs.h"
#include "component/backends/postscript/Pdfmarks.h"
#include "component/protocol/Reason.h"

#include <QString>

#include <functional>

namespace Quorlin {

class PrintCopy;

/// One PDF to be printed to PostScript.
struct PrintRequest
{
    QString input;
    QString output;
    QString workFolder;   ///< for the rewritten copy, which is removed again
    QString printer;      ///< goes into the comments of the output
    QString title;        ///< goes into the comments of the output
    AddressRebase rebase; ///< for addresses that point into the working folder
    bool foreign = true;  ///< somebody else made the PDF: permissions count, programs are removed
};

/// How the printing of a PDF ended.
struct PrintOutcome
{
    Reason reason = Reason::None;
    QString text; ///< for people; empty means the reason's own text
    int pages = 0;
};

/// Prints a PDF to PostScript that a distiller turns back into a PDF with the same text, links,
/// bookmarks and transparency.
class PdfPrinter
{
public:
    using Progress = std::function<void(int percent)>;

    explicit PdfPrinter(PdfToPs tool = PdfToPs());

    /// Blocks until the output is whole. After a failure there is no output.
    [[nodiscard]] PrintOutcome run(const PrintRequest &request, const Progress &progress);

private:
    [[nodiscard]] PrintOutcome print(const PrintRequest &request, const Progress &progress,
                                     PrintCopy &document, const QString &copy);

    PdfToPs m_tool;
};

} // namespace Quorlin
