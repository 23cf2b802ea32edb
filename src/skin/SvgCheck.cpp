#include "skin/SvgCheck.h"

#include <QXmlStreamReader>

#include <algorithm>

namespace Quorlin::SvgCheck {

namespace {

/// "url(#part)" is how attributes and styles refer to a part; "@" begins an import.
bool refersOutside(QStringView text)
{
    for (auto at = text.indexOf(u"url", 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(u"url", at + 1, Qt::CaseInsensitive)) {
        const auto behind = text.sliced(at + 3).trimmed();
        const auto isEndOfWord = at > 0 && text[at - 1].isLetterOrNumber();
        if (isEndOfWord || !behind.startsWith(u'('))
            continue;
        auto address = behind.sliced(1).trimmed();
        if (address.startsWith(u'"') || address.startsWith(u'\''))
            address = address.sliced(1).trimmed();
        if (!address.startsWith(u'#'))
            return true;
    }
    return text.contains(u"@import", Qt::CaseInsensitive) || text.contains(u'\\');
}

bool isAllowed(const QXmlStreamAttribute &attribute)
{
    const auto name = attribute.name();
    if (name == u"href" || name == u"src" || name == u"base")
        return attribute.value().trimmed().startsWith(u'#');
    return !refersOutside(attribute.value());
}

/// Walks through a document and stops at the first thing that is not wanted.
class Walk
{
public:
    explicit Walk(const QByteArray &svg) : m_reader(svg) { m_reader.setEntityExpansionLimit(0); }

    [[nodiscard]] bool isHarmless()
    {
        while (!m_reader.atEnd()) {
            m_reader.readNext();
            if (!acceptsToken())
                return false;
        }
        return !m_reader.hasError() && m_elements > 0;
    }

private:
    [[nodiscard]] bool acceptsToken()
    {
        switch (m_reader.tokenType()) {
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
        case QXmlStreamReader::ProcessingInstruction:
            return false;
        case QXmlStreamReader::StartElement:
            return acceptsElement();
        case QXmlStreamReader::EndElement:
            --m_depth;
            return true;
        case QXmlStreamReader::Characters:
            return !refersOutside(m_reader.text());
        default:
            return true;
        }
    }

    [[nodiscard]] bool acceptsElement()
    {
        ++m_depth;
        ++m_elements;
        if (m_elements == 1 && m_reader.name() != u"svg")
            return false;
        // Whatever its address looks like, an image comes from a file.
        if (m_reader.name().compare(u"image", Qt::CaseInsensitive) == 0)
            return false;
        return m_depth <= DeepestElement && m_elements <= MostElements &&
               std::ranges::all_of(m_reader.attributes(), isAllowed);
    }

    QXmlStreamReader m_reader;
    int m_depth = 0;
    int m_elements = 0;
};

} // namespace

bool isHarmless(const QByteArray &svg)
{
    return svg.size() <= MostBytes && Walk(svg).isHarmless();
}

} // namespace Quorlin::SvgCheck
