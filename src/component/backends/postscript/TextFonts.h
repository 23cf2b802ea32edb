#pragma once

#include <map>
#include <string>
#include <vector>

namespace Quorlin {

/// Fonts of empty glyphs, one for each character that a document says in place of its glyphs.
///
/// Such a character is shown invisibly where the glyphs stand, so that the words are found.
class TextFonts
{
public:
    /// PostScript that starts a span which stands for this text.
    /// @param text in UTF-16; characters that no glyph name can tell are left out.
    [[nodiscard]] std::string span(const std::u16string &text);

    /// PostScript that defines the fonts; to stand in the prolog.
    [[nodiscard]] std::string definitions() const;

private:
    struct Glyph
    {
        std::size_t font = 0;
        int code = 0;
    };

    [[nodiscard]] Glyph glyphFor(const std::string &name);

    std::map<std::string, Glyph> m_glyphs;
    std::vector<std::vector<std::string>> m_fonts; ///< names of the glyphs, from code 1
};

} // namespace Quorlin
