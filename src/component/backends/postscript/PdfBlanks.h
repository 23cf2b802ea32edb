#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Quorlin {

[[nodiscard]] inline bool isPdfBlank(char c)
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

/// The first position from this one on that is neither in a blank nor in a comment; the text's
/// size when there is none.
[[nodiscard]] inline std::size_t pastPdfBlanks(std::string_view text, std::size_t position)
{
    while (position < text.size()) {
        if (text[position] == '%')
            position = std::min(text.find_first_of("\r\n", position), text.size());
        else if (isPdfBlank(text[position]))
            ++position;
        else
            break;
    }
    return position;
}

} // namespace Quorlin
