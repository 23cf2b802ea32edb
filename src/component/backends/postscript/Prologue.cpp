#include "component/backends/postscript/Prologue.h"

#include "component/backends/postscript/GlyphName.h"
#include "component/backends/postscript/PrologueSources.h"

namespace Quorlin::Prologue {

namespace {

/// Few enough that an array of pairs stays within the limits of any interpreter.
constexpr int PairsInArray = 8000;

void appendHex(std::string &out, const std::u16string &text)
{
    static constexpr char Digits[] = "0123456789ABCDEF";
    out.push_back('<');
    for (const char16_t unit : text)
        for (int shift = 12; shift >= 0; shift -= 4)
            out.push_back(Digits[(unit >> shift) & 15]);
    out.push_back('>');
}

std::string textsOf(const std::string &name, const FontUnicode &font)
{
    std::string out = "xpdf /QTfonts get /" + name + " [[";
    int pairs = 0;
    for (const auto &[code, text] : font.texts()) {
        if (pairs > 0 && pairs % PairsInArray == 0)
            out += "][";
        out += (pairs++ % 8 == 0 ? "\n" : " ") + std::to_string(code);
        appendHex(out, text);
    }
    return out + "]] put\n";
}

std::string namesOf(const std::string &name, const FontUnicode &font)
{
    std::string out = "xpdf /QTnames get /" + name + " [";
    int pairs = 0;
    for (const auto &[code, text] : font.texts()) {
        const auto glyph = glyphName(text);
        if (code > 255 || glyph.empty())
            continue;
        out += (pairs++ % 6 == 0 ? "\n" : " ") + std::to_string(code) + "/" + glyph;
    }
    return out + "] put\n";
}

} // namespace

std::string procedures()
{
    return std::string(PrologueText) + ProloguePaint;
}

std::string fontTable(const std::map<std::string, FontUnicode> &fonts)
{
    std::string out;
    for (const auto &[name, font] : fonts)
        if (!font.texts().empty())
            out += font.byName() ? namesOf(name, font) : textsOf(name, font);
    return out;
}

} // namespace Quorlin::Prologue
