#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Quorlin {

/// Splits a character map into the tokens that matter: strings, integers, brackets, words.
class CMapReader
{
public:
    enum class Kind { End, String, Integer, Open, Close, Word };

    explicit CMapReader(std::string_view text);

    /// Goes to the next token.
    Kind next();

    /// The bytes of a string, or the letters of a word.
    [[nodiscard]] const std::string &bytes() const { return m_bytes; }

    /// The value of an integer, or of a string read as a big-endian number.
    [[nodiscard]] std::uint32_t value() const { return m_value; }

private:
    void readHexString();
    Kind readWord();

    std::string_view m_text;
    std::size_t m_position = 0;
    std::string m_bytes;
    std::uint32_t m_value = 0;
};

} // namespace Quorlin
