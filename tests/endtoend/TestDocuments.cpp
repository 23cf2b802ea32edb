#include "endtoend/TestDocuments.h"

#include <QByteArrayList>

#include <cmath>

namespace Quorlin::TestDocuments {

namespace {

quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = 0xffffffffU;
    for (const char byte : bytes) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1U) != 0 ? 0xedb88320U : 0U);
    }
    return ~sum;
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xffU);
    return bytes;
}

QByteArray chunk(const QByteArray &type, const QByteArray &content)
{
    return bigEndian(static_cast<quint32>(content.size())) + type + content +
           bigEndian(checksum(type + content));
}

/// One row of samples, with the byte before it that says how it is coded.
QByteArray photographRow(int width, int row, quint32 &grain)
{
    QByteArray bytes(1, '\0');
    for (int column = 0; column < width; ++column) {
        grain = grain * 1664525U + 1013904223U;
        const auto noise = static_cast<double>(grain >> 28);
        for (const double period : {61.0, 97.0, 141.0})
            bytes += static_cast<char>(static_cast<quint8>(
                110 + 60 * std::sin(column / period) * std::cos(row / period) + noise));
    }
    return bytes;
}

QByteArray flatText(const QByteArray &styles, const QByteArray &body)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0"
 xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
 office:version="1.3" office:mimetype="application/vnd.oasis.opendocument.text">)" +
           styles + "<office:body><office:text>" + body +
           "</office:text></office:body></office:document>";
}

QByteArray picture(const QByteArray &png)
{
    return "<text:p text:style-name=\"new\"><draw:frame text:anchor-type=\"as-char\""
           " svg:width=\"4in\" svg:height=\"3in\"><draw:image><office:binary-data>" +
           png.toBase64() + "</office:binary-data></draw:image></draw:frame></text:p>";
}

QByteArray contentOf(const QByteArray &text, int lines)
{
    QByteArray content = "BT /F1 24 Tf 72 700 Td (" + text + ") Tj ET\n";
    for (int line = 0; line < lines; ++line)
        content += QByteArray::number(72 + line % 400) + " 72 m " +
                   QByteArray::number(72 + line * 7 % 400) + " 600 l S\n";
    return content;
}

} // namespace

QByteArray page(const QByteArray &text)
{
    return "<html><head><meta charset=\"utf-8\"></head><body><p>" + text + "</p></body></html>\n";
}

QByteArray longPage(int parts)
{
    QByteArray bytes("<html><body>");
    for (int part = 1; part <= parts; ++part)
        bytes += "<h2>Part " + QByteArray::number(part) +
                 "</h2><p>Words of this <b>part</b> that fill a <i>line</i> or two, so that a "
                 "page is full soon and the next one begins.</p>";
    return bytes + "</body></html>\n";
}

QByteArray letter(const QByteArray &text)
{
    return flatText({}, "<text:p>" + text + "</text:p>");
}

QByteArray inFont(const QByteArray &font, const QByteArray &text)
{
    return flatText("<office:automatic-styles><style:style style:name=\"s\" "
                    "style:family=\"paragraph\"><style:text-properties fo:font-family=\"'" +
                        font + "'\"/></style:style></office:automatic-styles>",
                    "<text:p text:style-name=\"s\">" + text + "</text:p>");
}

QByteArray photograph(int width, int height)
{
    quint32 grain = 1;
    QByteArray samples;
    for (int row = 0; row < height; ++row)
        samples += photographRow(width, row, grain);
    return QByteArray("\x89PNG\r\n\x1a\n") +
           chunk("IHDR", bigEndian(static_cast<quint32>(width)) +
                             bigEndian(static_cast<quint32>(height)) +
                             QByteArray("\x08\x02\x00\x00\x00", 5)) +
           chunk("IDAT", qCompress(samples, 1).mid(4)) + chunk("IEND", {});
}

QByteArray photographs()
{
    return flatText("<office:automatic-styles><style:style style:name=\"new\" "
                    "style:family=\"paragraph\"><style:paragraph-properties "
                    "fo:break-before=\"page\"/></style:style></office:automatic-styles>",
                    picture(photograph(1200, 900)) + picture(photograph(1201, 900)));
}

QByteArray postScript(const QByteArray &text, int pages)
{
    const QByteArray page =
        "/Helvetica findfont 24 scalefont setfont 72 700 moveto (" + text + ") show showpage\n";
    return "%!PS-Adobe-3.0\n" + page.repeated(pages);
}

QByteArray slowPostScript(int steps)
{
    return "%!PS-Adobe-3.0\n1 1 " + QByteArray::number(steps) +
           " { pop } for\n/Helvetica findfont 24 scalefont setfont 72 700 moveto (slow) show "
           "showpage\n";
}

QByteArray endlessPostScript()
{
    return "%!PS-Adobe-3.0\n{ } loop\nshowpage\n";
}

QByteArray pdf(const QByteArray &text, int lines, int pages)
{
    QByteArrayList objects{"<< /Type /Catalog /Pages 2 0 R >>", QByteArray(),
                           "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
    const auto content = contentOf(text, lines);
    objects += "<< /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content +
               "endstream";
    QByteArray kids;
    for (int page = 0; page < pages; ++page) {
        objects += "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R "
                   "/Resources << /Font << /F1 3 0 R >> >> >>";
        kids += QByteArray::number(objects.size()) + " 0 R ";
    }
    objects[1] = "<< /Type /Pages /Count " + QByteArray::number(pages) + " /Kids [" + kids + "] >>";
    QByteArray bytes("%PDF-1.4\n");
    QByteArray table("0000000000 65535 f \n");
    for (qsizetype number = 1; number <= objects.size(); ++number) {
        table += QByteArray::number(bytes.size()).rightJustified(10, '0') + " 00000 n \n";
        bytes += QByteArray::number(number) + " 0 obj\n" + objects.at(number - 1) + "\nendobj\n";
    }
    const auto count = QByteArray::number(objects.size() + 1);
    const auto start = QByteArray::number(bytes.size());
    return bytes + "xref\n0 " + count + "\n" + table + "trailer\n<< /Size " + count +
           " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
}

} // namespace Quorlin::TestDocuments
