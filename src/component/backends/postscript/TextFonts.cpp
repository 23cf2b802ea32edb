#include "component/backends/postscript/TextFonts.h"

#include "component/backends/postscript/GlyphName.h"
#include "component/backends/postscript/PostScriptText.h"

namespace Quorlin {

namespace {

constexpr std::size_t GlyphsInFont = 255;

std::string fontName(std::size_t index)
{
    return "/QuorlinText" + std::to_string(index);
}

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xd800 && unit <= 0xdbff;
}

} // namespace

TextFonts::Glyph TextFonts::glyphFor(const std::string &name)
{
    const auto known = m_glyphs.find(name);
    if (known != m_glyphs.end())
        return known->second;
    if (m_fonts.empty() || m_fonts.back().size() == GlyphsInFont)
        m_fonts.emplace_back();
    m_fonts.back().push_back(name);
    const Glyph glyph{m_fonts.size() - 1, static_cast<int>(m_fonts.back().size())};
    m_glyphs.emplace(name, glyph);
    return glyph;
}

std::string TextFonts::span(const std::u16string &text)
{
    std::string result = "[";
    std::string codes;
    std::size_t font = 0;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t units = isHighSurrogate(text[i]) && i + 1 < text.size() ? 2 : 1;
        const auto name = glyphName(text.substr(i, units));
        i += units;
        if (name.empty())
            continue;
        const auto glyph = glyphFor(name);
        if (!codes.empty() && glyph.font != font) {
            result += fontName(font) + PostScriptText::hexString(codes);
            codes.clear();
        }
        font = glyph.font;
        codes.push_back(static_cast<char>(glyph.code));
    }
    if (!codes.empty())
        result += fontName(font) + PostScriptText::hexString(codes);
    return result + "] QTspan";
}

std::string TextFonts::definitions() const
{
    std::string text;
    for (std::size_t i = 0; i < m_fonts.size(); ++i) {
        text += "xpdf begin " + fontName(i) + " [";
        for (std::size_t k = 0; k < m_fonts[i].size(); ++k)
            text += (k % 10 == 0 ? "\n/" : "/") + m_fonts[i][k];
        text += "] QTtextfont end\n";
    }
    return text;
}

} // namespace Quorlin
