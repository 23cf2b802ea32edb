#include "component/backends/merge/DocumentInfo.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <qpdf/Buffer.hh>

namespace Quorlin {

namespace {

constexpr size_t MaxMetadata = 4194304;

const auto Rdf = QStringLiteral("http://www.w3.org/1999/02/22-rdf-syntax-ns#");
const auto DublinCore = QStringLiteral("http://purl.org/dc/elements/1.1/");
const auto Basic = QStringLiteral("http://ns.adobe.com/xap/1.0/");
const auto Pdf = QStringLiteral("http://ns.adobe.com/pdf/1.3/");

/// The date in the form of PDF text strings.
QString pdfDate(const QDateTime &utc)
{
    return utc.toString(QStringLiteral("'D:'yyyyMMddHHmmss'Z'"));
}

/// The date in the form of XMP, or nothing when it is not a date.
QString xmpDate(const QString &date)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:D:)?(\\d{4})(\\d\\d)(\\d\\d)(\\d\\d)(\\d\\d)(\\d\\d)(?:Z.*|([+-]\\d\\d)"
                       "'?(\\d\\d)?'?)?$"));
    const auto match = pattern.match(date);
    if (!match.hasMatch())
        return {};
    auto result = QStringLiteral("%1-%2-%3T%4:%5:%6");
    for (int i = 1; i <= 6; ++i)
        result = result.arg(match.captured(i));
    if (match.captured(7).isEmpty())
        return result + QLatin1Char('Z');
    const auto minutes = match.captured(8).isEmpty() ? QStringLiteral("00") : match.captured(8);
    return result + match.captured(7) + QLatin1Char(':') + minutes;
}

/// The first item of the list or alternative that the reader stands at.
QString firstItem(QXmlStreamReader &xml)
{
    QString item;
    for (int depth = 1; depth > 0 && !xml.atEnd();) {
        const auto token = xml.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : 0;
        depth -= token == QXmlStreamReader::EndElement ? 1 : 0;
        if (token == QXmlStreamReader::Characters && item.isEmpty())
            item = xml.text().toString().trimmed();
    }
    return item;
}

void writeItem(QXmlStreamWriter &xml, const QString &name, const QString &list, const QString &text)
{
    if (text.isEmpty())
        return;
    xml.writeStartElement(DublinCore, name);
    xml.writeStartElement(Rdf, list);
    xml.writeStartElement(Rdf, QStringLiteral("li"));
    if (list == QLatin1String("Alt"))
        xml.writeAttribute(QStringLiteral("xml:lang"), QStringLiteral("x-default"));
    xml.writeCharacters(text);
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndElement();
}

void writeText(QXmlStreamWriter &xml, const QString &space, const QString &name,
               const QString &text)
{
    if (!text.isEmpty())
        xml.writeTextElement(space, name, text);
}

} // namespace

DocumentInfo::DocumentInfo(SourceDocument &source, ObjectCopier &copier)
    : m_information(QPDFObjectHandle::newDictionary())
{
    auto information = source.information();
    if (information.isDictionary()) {
        for (auto [key, value] : information.getDictAsMap()) {
            if (value.isScalar())
                m_information.replaceKey(key, copier.copy(value));
        }
    }
    readMetadata(source.catalogEntry("/Metadata"));
    m_information.replaceKey(
        "/ModDate",
        QPDFObjectHandle::newUnicodeString(pdfDate(QDateTime::currentDateTimeUtc()).toStdString()));
}

void DocumentInfo::readMetadata(QPDFObjectHandle metadata)
{
    std::shared_ptr<Buffer> data;
    try {
        data = metadata.isStream() ? metadata.getStreamData() : nullptr;
    } catch (const std::exception &) {
        return; // metadata that cannot be decoded is as good as none
    }
    if (!data || data->getSize() > MaxMetadata)
        return;
    QXmlStreamReader xml(QByteArray(reinterpret_cast<const char *>(data->getBuffer()),
                                    static_cast<qsizetype>(data->getSize())));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.namespaceUri() != DublinCore)
            continue;
        if (xml.name() == QLatin1String("title"))
            setIfMissing("/Title", firstItem(xml));
        else if (xml.name() == QLatin1String("creator"))
            setIfMissing("/Author", firstItem(xml));
    }
}

void DocumentInfo::setIfMissing(const char *key, const QString &value)
{
    if (!value.isEmpty() && text(key).isEmpty())
        m_information.replaceKey(key, QPDFObjectHandle::newUnicodeString(value.toStdString()));
}

QString DocumentInfo::text(const char *key)
{
    auto value = m_information.getKey(key);
    return value.isString() ? QString::fromStdString(value.getUTF8Value()) : QString();
}

void DocumentInfo::write(QPDF &target)
{
    const auto xml = metadata();
    auto stream = QPDFObjectHandle::newStream(&target, xml.toStdString());
    stream.getDict().replaceKey("/Type", QPDFObjectHandle::newName("/Metadata"));
    stream.getDict().replaceKey("/Subtype", QPDFObjectHandle::newName("/XML"));
    target.getRoot().replaceKey("/Metadata", stream);
    target.getTrailer().replaceKey("/Info", target.makeIndirectObject(m_information));
}

QByteArray DocumentInfo::metadata()
{
    QByteArray bytes("<?xpacket begin=\"\xef\xbb\xbf\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n");
    QXmlStreamWriter xml(&bytes);
    xml.writeNamespace(QStringLiteral("adobe:ns:meta/"), QStringLiteral("x"));
    xml.writeStartElement(QStringLiteral("adobe:ns:meta/"), QStringLiteral("xmpmeta"));
    xml.writeNamespace(Rdf, QStringLiteral("rdf"));
    xml.writeStartElement(Rdf, QStringLiteral("RDF"));
    xml.writeNamespace(DublinCore, QStringLiteral("dc"));
    xml.writeNamespace(Basic, QStringLiteral("xmp"));
    xml.writeNamespace(Pdf, QStringLiteral("pdf"));
    xml.writeStartElement(Rdf, QStringLiteral("Description"));
    xml.writeAttribute(Rdf, QStringLiteral("about"), QString());
    writeItem(xml, QStringLiteral("title"), QStringLiteral("Alt"), text("/Title"));
    writeItem(xml, QStringLiteral("creator"), QStringLiteral("Seq"), text("/Author"));
    writeItem(xml, QStringLiteral("description"), QStringLiteral("Alt"), text("/Subject"));
    writeText(xml, Pdf, QStringLiteral("Keywords"), text("/Keywords"));
    writeText(xml, Pdf, QStringLiteral("Producer"), text("/Producer"));
    writeText(xml, Basic, QStringLiteral("CreatorTool"), text("/Creator"));
    writeText(xml, Basic, QStringLiteral("CreateDate"), xmpDate(text("/CreationDate")));
    writeText(xml, Basic, QStringLiteral("ModifyDate"), xmpDate(text("/ModDate")));
    xml.writeEndDocument();
    return bytes + "\n<?xpacket end=\"w\"?>\n";
}

} // namespace Quorlin
