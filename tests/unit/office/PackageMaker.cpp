#include "unit/office/PackageMaker.h"

#include <QtEndian>

namespace Quorlin {

namespace {

constexpr char TextType[] = "application/vnd.oasis.opendocument.text";

template <typename Number>
QByteArray number(Number value)
{
    QByteArray bytes(sizeof value, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

/// The part of a file's description that stands both before it and in the directory.
QByteArray description(const QByteArray &name, const QByteArray &content, quint16 method,
                       qsizetype storedSize)
{
    return number(quint16(20)) + number(quint16(0)) + number(method) + number(quint32(0x21)) +
           number(checksum(content)) + number(quint32(storedSize)) +
           number(quint32(content.size())) + number(quint16(name.size())) + number(quint16(0));
}

/// The stream of the zip format: without what the library puts around it.
QByteArray deflated(const QByteArray &content)
{
    constexpr int Length = 4, Header = 2, Checksum = 4;
    const auto packed = qCompress(content, 9);
    return packed.mid(Length + Header, packed.size() - Length - Header - Checksum);
}

QByteArray manifest(const QByteArray &ofContent)
{
    return QByteArray("<?xml version=\"1.0\"?><manifest:manifest manifest:version=\"1.2\" "
                      "xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0\">"
                      "<manifest:file-entry manifest:full-path=\"/\" manifest:version=\"1.2\" "
                      "manifest:media-type=\"") +
           TextType + "\"/>" + ofContent + "</manifest:manifest>";
}

QByteArray content(const QByteArray &text)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document-content "
           "office:version=\"1.2\" "
           "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
           "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\"><office:body>"
           "<office:text><text:p>" +
           text + "</text:p></office:text></office:body></office:document-content>";
}

} // namespace

void PackageMaker::add(const QByteArray &name, const QByteArray &content)
{
    constexpr quint16 Stored = 0;
    append(name, description(name, content, Stored, content.size()), content);
}

void PackageMaker::addCompressed(const QByteArray &name, const QByteArray &content)
{
    constexpr quint16 Deflated = 8;
    const auto data = deflated(content);
    append(name, description(name, content, Deflated, data.size()), data);
}

void PackageMaker::append(const QByteArray &name, const QByteArray &told, const QByteArray &data)
{
    const auto place = quint32(m_files.size());
    m_files += "PK\x03\x04" + told + name + data;
    m_directory += "PK\x01\x02" + number(quint16(20)) + told + number(quint16(0)) +
                   number(quint16(0)) + number(quint16(0)) + number(quint32(0)) + number(place) +
                   name;
    ++m_count;
}

QByteArray PackageMaker::bytes() const
{
    const auto count = number(quint16(m_count));
    return m_files + m_directory + "PK\x05\x06" + number(quint32(0)) + count + count +
           number(quint32(m_directory.size())) + number(quint32(m_files.size())) +
           number(quint16(0));
}

QByteArray PackageMaker::textDocument(const QByteArray &text)
{
    PackageMaker package;
    package.add("mimetype", TextType);
    package.add("content.xml", content(text));
    package.add("META-INF/manifest.xml",
                manifest("<manifest:file-entry manifest:full-path=\"content.xml\" "
                         "manifest:media-type=\"text/xml\"/>"));
    return package.bytes();
}

QByteArray PackageMaker::endlessDocument(int paragraphs)
{
    PackageMaker package;
    package.add("[Content_Types].xml",
                "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
                "<Default Extension=\"rels\" "
                "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                "<Override PartName=\"/word/document.xml\" "
                "ContentType=\"application/vnd.openxmlformats-officedocument.wordprocessingml."
                "document.main+xml\"/></Types>");
    package.add("_rels/.rels",
                "<Relationships "
                "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
                "<Relationship Id=\"r1\" Target=\"word/document.xml\" "
                "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
                "officeDocument\"/></Relationships>");
    package.addCompressed(
        "word/document.xml",
        "<w:document "
        "xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"><w:body>" +
            QByteArray("<w:p><w:r><w:t>bomb</w:t></w:r></w:p>").repeated(paragraphs) +
            "</w:body></w:document>");
    return package.bytes();
}

QByteArray PackageMaker::encryptedDocument()
{
    PackageMaker package;
    package.add("mimetype", TextType);
    package.add("content.xml", QByteArray(512, 'x'));
    package.add("META-INF/manifest.xml",
                manifest("<manifest:file-entry manifest:full-path=\"content.xml\" "
                         "manifest:media-type=\"text/xml\" manifest:size=\"512\">"
                         "<manifest:encryption-data manifest:checksum-type=\"SHA1/1K\" "
                         "manifest:checksum=\"AAAAAAAAAAAAAAAAAAAAAAAAAAA=\">"
                         "<manifest:algorithm manifest:algorithm-name=\"Blowfish CFB\" "
                         "manifest:initialisation-vector=\"AAAAAAAAAAA=\"/>"
                         "<manifest:key-derivation manifest:key-derivation-name=\"PBKDF2\" "
                         "manifest:key-size=\"16\" manifest:iteration-count=\"1024\" "
                         "manifest:salt=\"AAAAAAAAAAAAAAAAAAAAAA==\"/>"
                         "</manifest:encryption-data></manifest:file-entry>"));
    return package.bytes();
}

QByteArray PackageMaker::encryptedCompound()
{
    QByteArray bytes("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
    bytes.resize(1024, '\0');
    for (const char letter : QByteArray("EncryptedPackage"))
        bytes.append(letter).append('\0');
    bytes.resize(2048, '\0');
    return bytes;
}

} // namespace Quorlin
