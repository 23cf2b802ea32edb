#include "component/backends/postscript/FontRepair.h"

#include "component/backends/postscript/StreamBytes.h"

#include <algorithm>
#include <string_view>

namespace Quorlin::FontRepair {

namespace {

constexpr std::size_t MaxMapBytes = 16U * 1024 * 1024;

std::string nameOf(QPDFObjectHandle value)
{
    return value.isName() ? value.getName() : std::string();
}

bool isEmbedded(QPDFObjectHandle descriptor)
{
    return descriptor.hasKey("/FontFile") || descriptor.hasKey("/FontFile2") ||
           descriptor.hasKey("/FontFile3");
}

/// Fonts whose glyphs are not letters keep the encoding inside them.
bool isSymbolic(QPDFObjectHandle font, QPDFObjectHandle descriptor)
{
    constexpr long long SymbolicFlag = 4;
    for (const std::string_view word : {"Symbol", "Dingbats", "Wingdings", "Webdings"})
        if (nameOf(font.getKey("/BaseFont")).find(word) != std::string::npos)
            return true;
    auto flags = descriptor.getKey("/Flags");
    return nameOf(font.getKey("/Subtype")) == "/TrueType" && flags.isInteger() &&
           (flags.getIntValue() & SymbolicFlag) != 0;
}

void nameEncoding(QPDFObjectHandle font)
{
    auto descriptor = font.getKey("/FontDescriptor");
    const auto subtype = nameOf(font.getKey("/Subtype"));
    const bool simple = subtype == "/Type1" || subtype == "/TrueType" || subtype == "/MMType1";
    if (!simple || !descriptor.isDictionary() || isEmbedded(descriptor) ||
        isSymbolic(font, descriptor))
        return;
    auto encoding = font.getKey("/Encoding");
    const bool named = encoding.isName() && encoding.getName() != "/StandardEncoding";
    const bool told = encoding.isDictionary() &&
                      (encoding.hasKey("/BaseEncoding") || encoding.hasKey("/Differences"));
    if (named || told)
        return;
    // The printing tool takes an encoding for given only when it differs from the standard one.
    font.replaceKey("/Encoding",
                    QPDFObjectHandle::parse("<< /Type /Encoding /Differences [ 32 /space ] >>"));
}

QPDFObjectHandle descendant(QPDFObjectHandle font)
{
    auto list = font.getKey("/DescendantFonts");
    auto first = list.isArray() && list.getArrayNItems() > 0 ? list.getArrayItem(0) : list;
    return first.isDictionary() ? first : QPDFObjectHandle::newDictionary();
}

void cleanGlyphMap(QPDFObjectHandle font)
{
    auto map = descendant(font).getKey("/CIDToGIDMap");
    if (!map.isStream())
        return;
    auto bytes = streamBytes(map, MaxMapBytes);
    if (!bytes)
        return;
    bool changed = false;
    for (std::size_t i = 0; i + 1 < bytes->size(); i += 2) {
        if ((*bytes)[i] != '\xff' || (*bytes)[i + 1] != '\xff')
            continue;
        (*bytes)[i] = (*bytes)[i + 1] = '\0';
        changed = true;
    }
    if (changed)
        map.replaceStreamData(*bytes, QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
}

/// The printing tool draws this glyph wherever there is none, but does not make it.
void addEmptyGlyph(QPDF &pdf, QPDFObjectHandle font)
{
    auto glyphs = font.getKey("/CharProcs");
    if (!glyphs.isDictionary() || glyphs.hasKey("/.notdef"))
        return;
    glyphs.replaceKey("/.notdef", QPDFObjectHandle::newStream(&pdf, "0 0 d0\n"));
}

} // namespace

void repair(QPDF &pdf, QPDFObjectHandle font)
{
    const auto subtype = nameOf(font.getKey("/Subtype"));
    if (subtype == "/Type0")
        cleanGlyphMap(font);
    if (subtype == "/Type3")
        addEmptyGlyph(pdf, font);
    nameEncoding(font);
}

FontUnicode readTexts(QPDFObjectHandle font)
{
    auto map = font.getKey("/ToUnicode");
    const auto bytes = map.isStream() ? streamBytes(map, MaxMapBytes) : std::nullopt;
    if (!bytes)
        return {};
    auto texts = FontUnicode::parse(*bytes);
    const auto subtype = nameOf(font.getKey("/Subtype"));
    texts.setByName(subtype == "/Type1" || subtype == "/MMType1" || subtype == "/Type3");
    auto encoding = font.getKey("/Encoding");
    if (!encoding.isStream() || subtype != "/Type0")
        return texts;
    const auto codes = streamBytes(encoding, MaxMapBytes);
    return codes ? texts.byCid(*codes) : texts;
}

} // namespace Quorlin::FontRepair
