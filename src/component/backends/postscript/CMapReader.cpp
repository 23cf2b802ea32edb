#include "component/backends/postscript/CMapReader.h"

#include "component/backends/postscript/PdfBlanks.h"

#include <charconv>

namespace Quorlin {

namespace {

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

constexpr std::string_view Delimiters = " \n\r\t\f<>[]()/%{}";

} // namespace

CMapReader::CMapReader(std::string_view text) : m_text(text) {}

void CMapReader::readHexString()
{
    int pending = -1;
    m_bytes.clear();
    m_value = 0;
    while (m_position < m_text.size() && m_text[m_position] != '>') {
        const int digit = hexValue(m_text[m_position++]);
        if (digit < 0)
            continue;
        if (pending < 0) {
            pending = digit;
            continue;
        }
        m_bytes.push_back(static_cast<char>(pending * 16 + digit));
        m_value = (m_value << 8) | static_cast<std::uint32_t>(pending * 16 + digit);
        pending = -1;
    }
    if (pending >= 0)
        m_bytes.push_back(static_cast<char>(pending * 16));
    if (m_position < m_text.size())
        ++m_position;
}

CMapReader::Kind CMapReader::readWord()
{
    const auto start = m_position++;
    while (m_position < m_text.size() &&
           Delimiters.find(m_text[m_position]) == std::string_view::npos)
        ++m_position;
    m_bytes.assign(m_text.substr(start, m_position - start));
    const auto *end = m_bytes.data() + m_bytes.size();
    const auto result = std::from_chars(m_bytes.data(), end, m_value);
    return result.ec == std::errc() && result.ptr == end ? Kind::Integer : Kind::Word;
}

CMapReader::Kind CMapReader::next()
{
    m_position = pastPdfBlanks(m_text, m_position);
    if (m_position >= m_text.size())
        return Kind::End;
    const char c = m_text[m_position];
    if (c == '<' && m_position + 1 < m_text.size() && m_text[m_position + 1] != '<') {
        ++m_position;
        readHexString();
        return Kind::String;
    }
    if (c == '[' || c == ']') {
        ++m_position;
        return c == '[' ? Kind::Open : Kind::Close;
    }
    return readWord();
}

} // namespace Quorlin
