#pragma once

#include <string>
#include <string_view>

namespace Quorlin::Fuzz {

/// Whether PostScript that was made of a stranger's document can be nothing but data: lines of
/// printable ASCII without literal strings and comments, every bracket and every pdfmark closed in
/// its turn, and nothing but digits in hexadecimal strings.
class PostScriptCheck
{
public:
    [[nodiscard]] static bool isSafe(std::string_view text)
    {
        PostScriptCheck check(text);
        return check.run();
    }

private:
    explicit PostScriptCheck(std::string_view text) : m_text(text) {}

    [[nodiscard]] bool run()
    {
        while (m_at < m_text.size()) {
            if (!take(m_text[m_at++]))
                return false;
        }
        return m_open.empty();
    }

    [[nodiscard]] bool take(char c)
    {
        // The operator takes everything up to the mark, which nothing else closes.
        if (m_text.substr(m_at - 1).starts_with("pdfmark\n"))
            return close(']');
        switch (c) {
        case '<':
            return next('<') ? open('>') : hexString();
        case '>':
            return next('>') && close('>');
        case '[':
            return open(']');
        case '{':
            return open('}');
        case ']':
        case '}':
            return close(c);
        default:
            return c == '\n' || (c >= 0x20 && c < 0x7f && c != '(' && c != ')' && c != '%');
        }
    }

    [[nodiscard]] bool next(char c)
    {
        const bool follows = m_at < m_text.size() && m_text[m_at] == c;
        m_at += follows ? 1 : 0;
        return follows;
    }

    [[nodiscard]] bool open(char closing)
    {
        m_open.push_back(closing);
        return true;
    }

    [[nodiscard]] bool close(char closing)
    {
        if (m_open.empty() || m_open.back() != closing)
            return false;
        m_open.pop_back();
        return true;
    }

    [[nodiscard]] bool hexString()
    {
        m_at = m_text.find_first_not_of("0123456789ABCDEF\n", m_at);
        return m_at != std::string_view::npos && m_text[m_at++] == '>';
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::string m_open;
};

} // namespace Quorlin::Fuzz
