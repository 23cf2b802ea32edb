#include "component/backends/postscript/FontUnicode.h"

#include "component/backends/postscript/CMapReader.h"

#include <algorithm>

namespace Quorlin {

namespace {

constexpr std::size_t MaxCodes = 65536;
constexpr std::size_t MaxSteps = 1000000; ///< overlapping ranges end here
constexpr std::size_t LongestText = 32;
using Kind = CMapReader::Kind;

std::u16string utf16(const std::string &bytes)
{
    std::u16string text;
    if (bytes.size() == 1)
        return {static_cast<char16_t>(static_cast<unsigned char>(bytes[0]))};
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text.push_back(static_cast<char16_t>((static_cast<unsigned char>(bytes[i]) << 8) |
                                             static_cast<unsigned char>(bytes[i + 1])));
    return text;
}

/// Fills the map from the sections of one character map.
class SectionReader
{
public:
    explicit SectionReader(std::string_view cmap) : m_reader(cmap) {}

    std::map<std::uint32_t, std::u16string> read()
    {
        for (auto kind = m_reader.next(); kind != Kind::End; kind = m_reader.next()) {
            if (kind == Kind::Word && m_reader.bytes() == "beginbfchar")
                readCharacters();
            else if (kind == Kind::Word && m_reader.bytes() == "beginbfrange")
                readRanges();
        }
        return std::move(m_texts);
    }

private:
    void put(std::uint32_t code, std::u16string text)
    {
        if (!text.empty() && text.size() <= LongestText && code < MaxCodes)
            m_texts.insert_or_assign(code, std::move(text));
    }

    void readCharacters()
    {
        while (m_reader.next() == Kind::String) {
            const auto code = m_reader.value();
            if (m_reader.next() != Kind::String)
                return;
            put(code, utf16(m_reader.bytes()));
        }
    }

    void readRanges()
    {
        while (m_reader.next() == Kind::String) {
            const auto first = m_reader.value();
            if (m_reader.next() != Kind::String)
                return;
            const auto last = m_reader.value();
            const auto kind = m_reader.next();
            if (kind == Kind::String)
                putSequence(first, last, utf16(m_reader.bytes()));
            else if (kind == Kind::Open)
                putList(first, last);
            else
                return;
        }
    }

    void putSequence(std::uint32_t first, std::uint32_t last, std::u16string text)
    {
        if (text.empty())
            return;
        last = std::min<std::uint32_t>(last, MaxCodes - 1);
        for (auto code = first; code <= last && m_steps < MaxSteps; ++code, ++text.back()) {
            put(code, text);
            ++m_steps;
        }
    }

    void putList(std::uint32_t first, std::uint32_t last)
    {
        for (auto code = first; m_reader.next() == Kind::String; ++code)
            if (code <= last)
                put(code, utf16(m_reader.bytes()));
    }

    CMapReader m_reader;
    std::size_t m_steps = 0;
    std::map<std::uint32_t, std::u16string> m_texts;
};

/// Hands each code and its identifier of a character map to a function.
template <typename Take>
void readCids(std::string_view cmap, const Take &take)
{
    CMapReader reader(cmap);
    std::size_t steps = 0;
    for (auto kind = reader.next(); kind != Kind::End; kind = reader.next()) {
        const bool range = kind == Kind::Word && reader.bytes() == "begincidrange";
        if (!range && (kind != Kind::Word || reader.bytes() != "begincidchar"))
            continue;
        while (reader.next() == Kind::String) {
            const auto first = reader.value();
            if (range && reader.next() != Kind::String)
                break;
            const auto last = std::min<std::uint32_t>(reader.value(), MaxCodes - 1);
            if (reader.next() != Kind::Integer)
                break;
            const auto cid = reader.value();
            for (auto code = first; code <= last && steps < MaxSteps; ++code, ++steps)
                take(code, cid + (code - first));
        }
    }
}

} // namespace

FontUnicode FontUnicode::parse(std::string_view cmap)
{
    FontUnicode result;
    result.m_texts = SectionReader(cmap).read();
    return result;
}

FontUnicode FontUnicode::byCid(std::string_view cmap) const
{
    FontUnicode result;
    readCids(cmap, [&](std::uint32_t code, std::uint32_t cid) {
        const auto text = m_texts.find(code);
        if (text != m_texts.end() && cid < MaxCodes)
            result.m_texts.emplace(cid, text->second);
    });
    return result;
}

} // namespace Quorlin
