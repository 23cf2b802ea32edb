#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace Quorlin {

/// Which text each character code of a font stands for, read from a /ToUnicode character map.
///
/// Damaged maps give what could be read; a map never grows beyond 65536 codes.
class FontUnicode
{
public:
    FontUnicode() = default;

    /// Reads the bytes of a /ToUnicode stream.
    [[nodiscard]] static FontUnicode parse(std::string_view cmap);

    /// The same texts by character identifier instead of by code.
    /// @param cmap bytes of the font's own /Encoding stream. Codes it does not hold are dropped.
    [[nodiscard]] FontUnicode byCid(std::string_view cmap) const;

    /// Text of each code in UTF-16. Texts longer than 32 units and empty ones are left out.
    [[nodiscard]] const std::map<std::uint32_t, std::u16string> &texts() const { return m_texts; }

    /// True for a font whose glyphs tell their text by their names alone.
    [[nodiscard]] bool byName() const { return m_byName; }
    void setByName(bool byName) { m_byName = byName; }

private:
    bool m_byName = false;
    std::map<std::uint32_t, std::u16string> m_texts;
};

} // namespace Quorlin
