#include "component/backends/postscript/ContentScanner.h"

#include "component/backends/postscript/PdfBlanks.h"

#include <algorithm>
#include <charconv>

namespace Quorlin {

namespace {

bool isDelimiter(char c)
{
    switch (c) {
    case '(':
    case ')':
    case '<':
    case '>':
    case '[':
    case ']':
    case '{':
    case '}':
    case '/':
    case '%':
        return true;
    default:
        return false;
    }
}

bool isRegular(char c)
{
    return !isPdfBlank(c) && !isDelimiter(c);
}

/// Numbers and names are operands, and so are the literals; any other word is an operator.
bool isOperand(std::string_view token)
{
    const char first = token.front();
    if ((first >= '0' && first <= '9') || first == '-' || first == '+' || first == '.' ||
        isDelimiter(first))
        return true;
    return token == "true" || token == "false" || token == "null";
}

} // namespace

ContentScanner::ContentScanner(std::string_view content) : m_content(content) {}

std::string_view ContentScanner::operand(std::size_t fromLast) const
{
    if (fromLast >= m_count)
        return {};
    return m_operands[(m_pushed - 1 - fromLast) % MaxOperands];
}

std::string_view ContentScanner::operands() const
{
    const auto opStart = static_cast<std::size_t>(m_op.data() - m_content.data());
    return m_content.substr(m_begin, opStart - m_begin);
}

double ContentScanner::number(std::size_t fromLast) const
{
    auto text = operand(fromLast);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    double value = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return result.ec == std::errc() ? value : 0;
}

void ContentScanner::push(std::string_view operand)
{
    m_operands[m_pushed % MaxOperands] = operand;
    ++m_pushed;
    m_count = std::min(m_count + 1, MaxOperands);
}

void ContentScanner::skipString()
{
    std::size_t depth = 0;
    while (m_position < m_content.size()) {
        const char c = m_content[m_position++];
        if (c == '\\')
            ++m_position;
        else if (c == '(')
            ++depth;
        else if (c == ')' && --depth == 0)
            return;
    }
    m_position = m_content.size();
    m_brokenOff = true;
}

void ContentScanner::skipHexString()
{
    const auto close = m_content.find('>', m_position);
    m_brokenOff = m_brokenOff || close == std::string_view::npos;
    m_position = close == std::string_view::npos ? m_content.size() : close + 1;
}

void ContentScanner::skipRegular()
{
    while (m_position < m_content.size() && isRegular(m_content[m_position]))
        ++m_position;
}

bool ContentScanner::readToken(std::string_view &token)
{
    m_position = pastPdfBlanks(m_content, m_position);
    if (m_position >= m_content.size())
        return false;
    const auto start = m_position;
    const char c = m_content[start];
    const bool isDouble = start + 1 < m_content.size() && m_content[start + 1] == c;
    if (c == '(') {
        skipString();
        token = m_content.substr(start, 1);
        return true;
    }
    if (c == '<' && !isDouble) {
        skipHexString();
        token = m_content.substr(start, 1);
        return true;
    }
    ++m_position;
    if ((c == '<' || c == '>') && isDouble)
        ++m_position;
    else if (c == '/' || isRegular(c))
        skipRegular();
    token = m_content.substr(start, m_position - start);
    return true;
}

bool ContentScanner::looksLikeContent(std::size_t position) const
{
    const auto rest = m_content.substr(position, 12);
    return std::all_of(rest.begin(), rest.end(), [](char c) {
        return (c >= 0x20 && c < 0x7f) || c == '\n' || c == '\r' || c == '\t';
    });
}

void ContentScanner::skipInlineImage()
{
    std::string_view token;
    while (readToken(token) && token != "ID") {
    }
    for (auto found = m_content.find("EI", m_position); found != std::string_view::npos;
         found = m_content.find("EI", found + 1)) {
        const auto after = found + 2;
        const bool endsHere = after >= m_content.size() || isPdfBlank(m_content[after]);
        if (found > 0 && isPdfBlank(m_content[found - 1]) && endsHere && looksLikeContent(after)) {
            m_position = after;
            return;
        }
    }
    m_position = m_content.size();
    m_brokenOff = true;
}

bool ContentScanner::next()
{
    m_count = 0;
    bool first = true;
    std::string_view token;
    while (readToken(token)) {
        if (first)
            m_begin = static_cast<std::size_t>(token.data() - m_content.data());
        first = false;
        if (isOperand(token)) {
            push(token);
            continue;
        }
        m_op = token;
        if (token == "BI")
            skipInlineImage();
        return true;
    }
    return false;
}

} // namespace Quorlin
