#pragma once

#include <QByteArray>
#include <QByteArrayList>

/// Writes small PDF files for tests, object by object.
class PdfBuilder
{
public:
    /// Adds an object and returns its number.
    int add(const QByteArray &object)
    {
        m_objects.append(object);
        return static_cast<int>(m_objects.size());
    }

    /// Adds a stream; @p entries are those of its dictionary besides the length.
    int addStream(const QByteArray &entries, const QByteArray &bytes)
    {
        return add("<< " + entries + " /Length " + QByteArray::number(bytes.size()) +
                   " >>\nstream\n" + bytes + "\nendstream");
    }

    /// The number that the next object will get.
    [[nodiscard]] int next() const { return static_cast<int>(m_objects.size()) + 1; }

    /// Replaces an object that was added before.
    void replace(int number, const QByteArray &object) { m_objects[number - 1] = object; }

    /// The whole file. @p trailer holds entries of the trailer besides /Size and /Root.
    [[nodiscard]] QByteArray file(int root, const QByteArray &trailer = {}) const
    {
        QByteArray bytes = "%PDF-1.6\n%\xe2\xe3\xcf\xd3\n";
        QByteArray table = "0000000000 65535 f \n";
        for (int i = 0; i < m_objects.size(); ++i) {
            table += QByteArray::number(bytes.size()).rightJustified(10, '0') + " 00000 n \n";
            bytes += QByteArray::number(i + 1) + " 0 obj\n" + m_objects[i] + "\nendobj\n";
        }
        const auto start = bytes.size();
        const auto size = QByteArray::number(m_objects.size() + 1);
        return bytes + "xref\n0 " + size + "\n" + table + "trailer\n<< /Size " + size + " /Root " +
               ref(root) + " " + trailer + " >>\nstartxref\n" + QByteArray::number(start) +
               "\n%%EOF\n";
    }

    [[nodiscard]] static QByteArray ref(int number) { return QByteArray::number(number) + " 0 R"; }

private:
    QByteArrayList m_objects;
};

/// A document of pages over PdfBuilder: object 1 is the catalog, object 2 the page tree.
class PdfDocument
{
public:
    PdfDocument()
    {
        m_builder.add({});
        m_builder.add({});
        m_font = m_builder.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
                               "/Encoding /WinAnsiEncoding >>");
    }

    PdfBuilder &builder() { return m_builder; }

    /// Adds a page that may use the font /F1. @return its object number.
    int addPage(const QByteArray &content, const QByteArray &resources = {},
                const QByteArray &entries = "/MediaBox [0 0 300 200]")
    {
        const int stream = m_builder.addStream({}, content);
        const int page =
            m_builder.add("<< /Type /Page /Parent 2 0 R /Contents " + PdfBuilder::ref(stream) +
                          " " + entries + " /Resources << /Font << /F1 " + PdfBuilder::ref(m_font) +
                          " >> " + resources + " >> >>");
        m_kids += PdfBuilder::ref(page) + " ";
        ++m_count;
        return page;
    }

    /// @param catalog entries of the catalog besides the pages.
    [[nodiscard]] QByteArray file(const QByteArray &catalog = {}, const QByteArray &trailer = {})
    {
        m_builder.replace(1, "<< /Type /Catalog /Pages 2 0 R " + catalog + " >>");
        m_builder.replace(2, "<< /Type /Pages /Count " + QByteArray::number(m_count) + " /Kids [" +
                                 m_kids + "] >>");
        return m_builder.file(1, trailer);
    }

private:
    PdfBuilder m_builder;
    QByteArray m_kids;
    int m_count = 0;
    int m_font = 0;
};
