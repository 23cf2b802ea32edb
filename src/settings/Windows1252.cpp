#include "settings/Windows1252.h"

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

/// The characters of the bytes 0x80 to 0x9F, in which Windows-1252 differs from Latin-1.
constexpr std::array<char16_t, 32> Middle{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr unsigned MiddleStart = 0x80;
constexpr unsigned MiddleEnd = MiddleStart + Middle.size();

char byteOf(char16_t character)
{
    if (character < MiddleStart || (character >= MiddleEnd && character <= 0xFF))
        return static_cast<char>(character);
    const auto *const found = std::ranges::find(Middle, character);
    return found == Middle.end() ? '?' : static_cast<char>(MiddleStart + (found - Middle.begin()));
}

} // namespace

QString fromWindows1252(const QByteArray &bytes)
{
    auto text = QString::fromLatin1(bytes);
    for (auto &character : text) {
        const auto code = character.unicode();
        if (code >= MiddleStart && code < MiddleEnd)
            character = Middle.at(code - MiddleStart);
    }
    return text;
}

QByteArray toWindows1252(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        bytes.append(byteOf(text.at(at).unicode()));
        // Both halves of a character beyond the first plane are one "?".
        if (text.at(at).isHighSurrogate() && at + 1 < text.size() &&
            text.at(at + 1).isLowSurrogate())
            ++at;
    }
    return bytes;
}

} // namespace Quorlin
