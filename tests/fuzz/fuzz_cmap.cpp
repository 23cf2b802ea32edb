#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/PostScriptCheck.h"

#include "component/backends/postscript/CMapReader.h"
#include "component/backends/postscript/FontUnicode.h"
#include "component/backends/postscript/GlyphName.h"
#include "component/backends/postscript/PostScriptText.h"
#include "component/backends/postscript/Prologue.h"

#include <set>

using namespace Quorlin;
using Fuzz::check;

namespace {

/// What lies behind this byte is the font's own encoding.
constexpr std::string_view EndOfTexts = "\x01";

/// Every token takes at least one byte, so that no map is read for ever.
void checkTokens(std::string_view cmap)
{
    CMapReader reader(cmap);
    std::size_t tokens = 0;
    for (auto kind = reader.next(); kind != CMapReader::Kind::End; kind = reader.next()) {
        check(++tokens <= cmap.size() && reader.bytes().size() <= cmap.size());
        check(kind != CMapReader::Kind::Integer ||
              std::stoull(reader.bytes()) == std::uint64_t{reader.value()});
    }
    check(reader.next() == CMapReader::Kind::End);
}

void checkTexts(const FontUnicode &font)
{
    check(font.texts().size() <= 65536);
    for (const auto &[code, text] : font.texts()) {
        check(code < 65536 && !text.empty() && text.size() <= 32);
        const auto name = glyphName(text);
        check(name.empty() || PostScriptText::isPlainName(name));
    }
}

/// The second map only sorts the texts of the first one anew.
void checkSorted(const FontUnicode &byCode, const FontUnicode &byCid)
{
    checkTexts(byCid);
    std::set<std::u16string> known;
    for (const auto &[code, text] : byCode.texts())
        known.insert(text);
    for (const auto &[cid, text] : byCid.texts())
        check(known.contains(text));
}

void checkTable(FontUnicode font, bool byName)
{
    font.setByName(byName);
    check(Fuzz::PostScriptCheck::isSafe(Prologue::fontTable({{"F1_0", font}})));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const Fuzz::Halves maps(Fuzz::textOf(data, size), EndOfTexts);
    checkTokens(maps.first);
    const auto font = FontUnicode::parse(maps.first);
    checkTexts(font);
    checkTable(font, size % 2 == 0);
    if (maps.cut)
        checkSorted(font, font.byCid(maps.second));
    return 0;
}
