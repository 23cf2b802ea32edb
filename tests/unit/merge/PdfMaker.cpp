#include "unit/merge/PdfMaker.h"

#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include <QFile>

#include <cctype>

namespace Quorlin {

PdfMaker::PdfMaker(const std::string &name, int pages)
{
    m_pdf.emptyPDF();
    const auto font = m_pdf.makeIndirectObject(QPDFObjectHandle::parse(
        "<</Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding>>"));
    for (int i = 1; i <= pages; ++i) {
        auto page = QPDFObjectHandle::parse("<</Type /Page /MediaBox [0 0 200 300]>>");
        page.replaceKey("/Resources", QPDFObjectHandle::parse("<</Font <<>>>>"));
        page.getKey("/Resources").getKey("/Font").replaceKey("/F1", font);
        const auto content = "BT /F1 12 Tf 20 20 Td (" + name + std::to_string(i) + ") Tj ET";
        page.replaceKey("/Contents", QPDFObjectHandle::newStream(&m_pdf, content));
        m_pages.push_back(m_pdf.makeIndirectObject(page));
        QPDFPageDocumentHelper(m_pdf).addPage(m_pages.back(), false);
    }
}

QPDFObjectHandle PdfMaker::page(int number) const
{
    return m_pages.at(static_cast<size_t>(number - 1));
}

QPDFObjectHandle PdfMaker::parse(const std::string &text) const
{
    std::string resolved;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '@' || i + 1 == text.size() || !std::isdigit(text[i + 1]))
            resolved += text[i];
        else
            resolved += page(text[++i] - '0').unparse();
    }
    return QPDFObjectHandle::parse(const_cast<QPDF *>(&m_pdf), resolved);
}

QPDFObjectHandle PdfMaker::object(const std::string &text)
{
    return m_pdf.makeIndirectObject(parse(text));
}

void PdfMaker::set(const std::string &key, const std::string &text)
{
    root().replaceKey(key, parse(text));
}

QPDFObjectHandle PdfMaker::addLink(int pageNumber, const std::string &entries)
{
    auto link =
        object("<</Type /Annot /Subtype /Link /Rect [0 0 10 10] /StructParent 7 " + entries + ">>");
    auto owner = page(pageNumber);
    if (!owner.hasKey("/Annots"))
        owner.replaceKey("/Annots", QPDFObjectHandle::newArray());
    owner.getKey("/Annots").appendItem(link);
    return link;
}

QPDFObjectHandle PdfMaker::addBookmark(QPDFObjectHandle parent, const std::string &title,
                                       const std::string &entries)
{
    if (parent.isNull()) {
        if (!root().hasKey("/Outlines"))
            root().replaceKey("/Outlines", object("<</Type /Outlines>>"));
        parent = root().getKey("/Outlines");
    }
    auto item = object("<<" + entries + ">>");
    item.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(title));
    item.replaceKey("/Parent", parent);
    if (parent.hasKey("/Last")) {
        item.replaceKey("/Prev", parent.getKey("/Last"));
        parent.getKey("/Last").replaceKey("/Next", item);
    } else {
        parent.replaceKey("/First", item);
    }
    parent.replaceKey("/Last", item);
    return item;
}

void PdfMaker::save(const QString &path)
{
    const auto file = QFile::encodeName(path);
    QPDFWriter writer(m_pdf, file.constData());
    writer.write();
}

void PdfMaker::saveEncrypted(const QString &path, const char *password)
{
    const auto file = QFile::encodeName(path);
    QPDFWriter writer(m_pdf, file.constData());
    writer.setR6EncryptionParameters(password, "owner", true, true, false, true, true, true,
                                     qpdf_r3p_full, true);
    writer.write();
}

} // namespace Quorlin
