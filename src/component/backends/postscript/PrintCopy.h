#pragma once

#include "component/backends/postscript/FontUnicode.h"
#include "component/backends/postscript/PdfInventory.h"
#include "component/backends/postscript/TextFonts.h"
#include "component/protocol/Reason.h"

#include <QByteArray>
#include <QString>

#include <qpdf/QPDFObjGen.hh>

#include <map>
#include <memory>
#include <string>

class QPDF;

namespace Quorlin {

/// A PDF opened for printing, and the copy of it that the printing tool reads.
///
/// The copy holds nothing but pages: no titles, scripts, structure or files, no programs of
/// PostScript, and its transparency is written as marks for our prologue.
class PrintCopy
{
public:
    PrintCopy();
    ~PrintCopy();
    PrintCopy(const PrintCopy &) = delete;
    PrintCopy &operator=(const PrintCopy &) = delete;

    /// Opens a PDF and reads its inventory.
    /// @param foreign whether the owner's permissions count.
    /// @return Reason::None, Protected, NotPrintable, Damaged, NotFound, NotReadable, OutOfMemory
    /// or NothingPrinted.
    [[nodiscard]] Reason open(const QString &path, bool foreign);

    [[nodiscard]] const PdfInventory &inventory() const { return m_inventory; }

    /// Rewrites the document and writes the copy. To be called once, after open().
    /// @return Reason::None, Damaged, NoRoom, NotAllowed or OutOfMemory.
    [[nodiscard]] Reason write(const QString &path);

    /// The text behind the codes of each font, by the name that the printing tool gives it.
    [[nodiscard]] const std::map<std::string, FontUnicode> &fonts() const { return m_fonts; }

    /// The texts that contents give in place of their glyphs.
    [[nodiscard]] const TextFonts &textFonts() const { return m_textFonts; }

    /// What the library said about the last failure; empty when there was none.
    [[nodiscard]] const QString &detail() const { return m_detail; }

private:
    Reason openFile(const QString &path, bool foreign);
    std::map<QPDFObjGen, FontUnicode> rewrite();
    void cleanRoot();
    void cleanPage(std::size_t index);
    void disarm();
    void save(const QString &path, std::map<QPDFObjGen, FontUnicode> texts);

    QByteArray m_path; ///< the library keeps no copy of it
    std::unique_ptr<QPDF> m_pdf;
    bool m_foreign = true;
    PdfInventory m_inventory;
    std::map<std::string, FontUnicode> m_fonts;
    TextFonts m_textFonts;
    QString m_detail;
};

} // namespace Quorlin
