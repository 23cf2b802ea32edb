#include "component/backends/postscript/FontUnicode.h"

#include "component/backends/postscript/CMapReader.h"

#include <algorithm>

namespace Quorlin {

namespace {

constexpr std::size_t MaxCodes = 65536;
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
        for (auto code = first; code <= last; ++code, ++text.back())
            put(code, text);
    }

    void putList(std::uint32_t first, std::uint32_t last)
    {
        for (auto code = first; m_reader.next() == Kind::String; ++code)
            if (code <= last)
                put(code, utf16(m_reader.bytes()));
    }

    CMapReader m_reader;
    std::map<std::uint32_t, std::u16string> m_texts;
};

} // namespace

FontUnicode FontUnicode::parse(std::string_view cmap)
{
    FontUnicode result;
    result.m_texts = SectionReader(cmap).read();
    return result;
}

} // namespace Quorlin
