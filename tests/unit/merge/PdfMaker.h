#pragma once

#include <QString>

#include <qpdf/QPDF.hh>

#include <string>
#include <vector>

namespace Quorlin {

/// Makes a small document for a test. Each page shows its own name, such as "a1", "a2".
class PdfMaker
{
public:
    PdfMaker(const std::string &name, int pages);

    [[nodiscard]] QPDF &pdf() { return m_pdf; }
    [[nodiscard]] QPDFObjectHandle root() { return m_pdf.getRoot(); }
    [[nodiscard]] QPDFObjectHandle page(int number) const; ///< from 1

    /// An object from its PDF text; "@3" stands for a reference to page 3.
    [[nodiscard]] QPDFObjectHandle parse(const std::string &text) const;

    /// The same as an object of its own.
    [[nodiscard]] QPDFObjectHandle object(const std::string &text);

    /// Puts an entry into the catalog.
    void set(const std::string &key, const std::string &text);

    /// Adds a link annotation with these further entries to a page.
    QPDFObjectHandle addLink(int page, const std::string &entries);

    /// Adds a bookmark beneath a parent (the root when null) with these further entries.
    QPDFObjectHandle addBookmark(QPDFObjectHandle parent, const std::string &title,
                                 const std::string &entries);

    void save(const QString &path);

    /// Saves with a password that is needed for opening ("" for none) and without the right to
    /// take the document apart.
    void saveEncrypted(const QString &path, const char *password);

private:
    QPDF m_pdf;
    std::vector<QPDFObjectHandle> m_pages;
};

} // namespace Quorlin
