#include "component/backends/postscript/PdfPrinter.h"

#include "component/backends/postscript/PostScriptSplice.h"
#include "component/backends/postscript/PostScriptText.h"
#include "component/backends/postscript/PrintCopy.h"
#include "component/backends/postscript/Prologue.h"
#include "component/confinement/DiskRoom.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

namespace Quorlin {

namespace {

using PostScriptText::comment;
using PostScriptText::number;

/// A distiller takes %%Title for the title of the PDF, so it is the document's own or left out.
std::string header(const PrintRequest &request, const PdfInventory &inventory)
{
    std::string text = "%!PS-Adobe-3.0\n";
    for (const auto &[key, value] : inventory.info)
        if (key == "Title")
            text += "%%Title: " + comment(value) + "\n";
    return text +
           "%%Creator: Quorlin " QUORLIN_VERSION "\n%QuorlinDocument: " + comment(request.title) +
           "\n%QuorlinPrinter: " + comment(request.printer) + "\n";
}

std::string pageSetup(const PageGeometry &page, const std::string &marks)
{
    const auto &box = page.box();
    std::string text = number(page.sheetWidth()) + " " + number(page.sheetHeight()) +
                       " QTpage\npdfStartPage\n" + marks;
    text += PostScriptText::matrix(page.toSheet()) + " concat\n";
    for (const double value : {box[0], box[1], box[2] - box[0], box[3] - box[1]})
        text += number(value) + " ";
    return text + "re W\n";
}

/// A file that cannot be made on a full disk is told from one that may not be made.
Reason refusalOf(const QString &folder)
{
    constexpr qint64 LittleRoom = 64 * 1024; // bytes
    return DiskRoom::isShort(folder, LittleRoom) ? Reason::NoRoom : Reason::NotAllowed;
}

/// Writes the output file and takes it back unless it was kept. What is no ordinary file, such
/// as a device, is never removed.
class Output
{
public:
    explicit Output(const QString &path) : m_file(path) {}

    ~Output()
    {
        if (m_opened && !m_kept && QFileInfo(m_file.fileName()).isFile())
            m_file.remove();
    }

    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    [[nodiscard]] bool open()
    {
        m_opened = m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
        return m_opened;
    }

    [[nodiscard]] bool write(const std::string &bytes)
    {
        const auto size = static_cast<qint64>(bytes.size());
        return m_file.write(bytes.data(), size) == size;
    }

    [[nodiscard]] Reason failure() const
    {
        return m_file.error() == QFileDevice::ResourceError
                   ? Reason::NoRoom
                   : refusalOf(QFileInfo(m_file.fileName()).path());
    }

    void keep()
    {
        m_file.close();
        m_kept = true;
    }

private:
    QFile m_file;
    bool m_opened = false;
    bool m_kept = false;
};

} // namespace

PdfPrinter::PdfPrinter(PdfToPs tool) : m_tool(std::move(tool)) {}

PrintOutcome PdfPrinter::run(const PrintRequest &request, const Progress &progress)
{
    PrintCopy document;
    auto reason = document.open(request.input, request.foreign);
    if (reason != Reason::None)
        return {reason, {}, 0};
    QTemporaryFile copy(request.workFolder + QStringLiteral("/print-XXXXXX.pdf"));
    if (!copy.open())
        return {refusalOf(request.workFolder), {}, 0};
    copy.close();
    reason = document.write(copy.fileName());
    if (reason != Reason::None)
        return {reason, document.detail(), 0};
    return print(request, progress, document, copy.fileName());
}

PrintOutcome PdfPrinter::print(const PrintRequest &request, const Progress &progress,
                               PrintCopy &document, const QString &copy)
{
    const auto &pages = document.inventory().pages;
    const int count = static_cast<int>(pages.size());
    const Pdfmarks marks(document.inventory(), request.rebase);
    SpliceParts parts;
    parts.header = header(request, document.inventory());
    parts.prolog = Prologue::procedures() + Prologue::fontTable(document.fonts()) +
                   document.textFonts().definitions();
    parts.setup = marks.documentMarks();
    parts.pageSetup = [&](int page) {
        const auto index = static_cast<std::size_t>(page - 1);
        return index < pages.size() ? pageSetup(pages[index], marks.pageMarks(page))
                                    : std::string("pdfStartPage\n");
    };
    Output output(request.output);
    if (!output.open())
        return {output.failure(), {}, 0};
    bool written = true;
    PostScriptSplice splice(std::move(parts),
                            [&](const std::string &bytes) { return output.write(bytes); });
    const auto reason = m_tool.run(copy, [&](const QByteArray &piece) {
        written = splice.take(piece);
        progress(std::min(99, 100 * splice.pages() / (count + 1)));
        return written;
    });
    written = written && splice.finish();
    if (!written)
        return {output.failure(), {}, 0};
    if (reason != Reason::None)
        return {reason, m_tool.detail(), 0};
    if (!splice.whole() || splice.pages() != count)
        return {Reason::Damaged, QStringLiteral("Not every page could be printed"), 0};
    output.keep();
    return {Reason::None, {}, count};
}

} // namespace Quorlin
