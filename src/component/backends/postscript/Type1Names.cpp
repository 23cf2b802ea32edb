#include "component/backends/postscript/Type1Names.h"

#include "component/backends/postscript/PostScriptText.h"
#include "component/backends/postscript/StreamBytes.h"

#include <algorithm>
#include <string_view>

namespace Quorlin {

namespace {

constexpr std::size_t MaxProgramBytes = 64U * 1024 * 1024;
constexpr std::string_view Blanks = " \t\r\n\f";
constexpr std::string_view WordEnds = " \t\r\n\f/()[]{}<>%";

struct Place
{
    std::size_t begin;
    std::size_t length;
};

/// Where the name stands in the part of the program that can be read.
std::optional<Place> namePlace(const std::string &program)
{
    constexpr std::string_view Key = "/FontName";
    const auto end = std::min(program.find("eexec"), program.size());
    const auto key = program.find(Key);
    if (key >= end || program.front() == '\x80')
        return std::nullopt;
    const auto slash = program.find_first_not_of(Blanks, key + Key.size());
    if (slash >= end || program[slash] != '/')
        return std::nullopt;
    const auto stop = std::min(program.find_first_of(WordEnds, slash + 1), end);
    return Place{slash + 1, stop - slash - 1};
}

void rename(QPDFObjectHandle file, std::string program, const Place &place, const std::string &name)
{
    program.replace(place.begin, place.length, name);
    auto dictionary = file.getDict();
    auto clear = dictionary.getKey("/Length1");
    if (clear.isInteger())
        dictionary.replaceKey("/Length1",
                              QPDFObjectHandle::newInteger(clear.getIntValue() +
                                                           static_cast<long long>(name.size()) -
                                                           static_cast<long long>(place.length)));
    file.replaceStreamData(program, QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
}

} // namespace

/// Fonts that are not embedded go by these names.
Type1Names::Type1Names()
    : m_taken{"Courier",     "Courier-Bold",   "Courier-BoldOblique",   "Courier-Oblique",
              "Helvetica",   "Helvetica-Bold", "Helvetica-BoldOblique", "Helvetica-Oblique",
              "Symbol",      "Times-Bold",     "Times-BoldItalic",      "Times-Italic",
              "Times-Roman", "ZapfDingbats"}
{
}

std::string Type1Names::freeName(const std::string &wanted, const std::string &given)
{
    constexpr std::size_t TagLength = 7; // "ABCDEF+", which no result shows
    if (wanted.find('+') == TagLength - 1 &&
        PostScriptText::isPlainName(wanted.substr(0, TagLength - 1)) &&
        PostScriptText::isPlainName(wanted.substr(TagLength)) && m_taken.insert(wanted).second)
        return wanted;
    const auto base = given.substr(0, 80);
    for (std::size_t number = 2;; ++number) {
        auto name = base + "-" + std::to_string(number);
        if (m_taken.insert(name).second)
            return name;
    }
}

void Type1Names::separate(QPDFObjectHandle font)
{
    auto descriptor = font.getKey("/FontDescriptor");
    auto file = descriptor.isDictionary() ? descriptor.getKey("/FontFile") : descriptor;
    if (!file.isStream() || !m_seen.insert(file.getObjGen()).second)
        return;
    auto program = streamBytes(file, MaxProgramBytes);
    const auto place = program && !program->empty() ? namePlace(*program) : std::nullopt;
    if (!place)
        return;
    const auto given = program->substr(place->begin, place->length);
    if (m_taken.insert(given).second)
        return;
    auto wanted = descriptor.getKey("/FontName");
    rename(file, std::move(*program), *place,
           freeName(wanted.isName() ? wanted.getName().substr(1) : std::string(), given));
}

} // namespace Quorlin
