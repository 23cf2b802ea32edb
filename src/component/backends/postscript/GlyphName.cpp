#include "component/backends/postscript/GlyphName.h"

#include <algorithm>

namespace Quorlin {

namespace {

constexpr std::size_t MostUnits = 12;

bool isSurrogate(char16_t unit)
{
    return unit >= 0xd800 && unit <= 0xdfff;
}

std::string hex(unsigned value, int digits)
{
    static constexpr char Digits[] = "0123456789ABCDEF";
    std::string text;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text.push_back(Digits[(value >> shift) & 15]);
    return text;
}

std::string supplementaryName(const std::u16string &text)
{
    const bool isPair =
        text.size() == 2 && text[0] <= 0xdbff && text[1] >= 0xdc00 && text[1] <= 0xdfff;
    if (!isPair)
        return {};
    const unsigned point = 0x10000U + ((text[0] - 0xd800U) << 10) + (text[1] - 0xdc00U);
    return "u" + hex(point, point > 0xfffff ? 6 : 5);
}

} // namespace

std::string glyphName(const std::u16string &text)
{
    if (text.empty() || text.size() > MostUnits)
        return {};
    if (std::any_of(text.begin(), text.end(), isSurrogate))
        return supplementaryName(text);
    std::string name = "uni";
    for (const char16_t unit : text)
        name += hex(unit, 4);
    return name;
}

} // namespace Quorlin
