#include "component/backends/postscript/PostScriptText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Quorlin::PostScriptText {

namespace {

constexpr double LargestNumber = 1e9;
constexpr qsizetype LongestComment = 200;

std::string withoutTrailingZeros(std::string digits)
{
    if (digits.find('.') == std::string::npos)
        return digits;
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.')
        digits.pop_back();
    return digits == "-0" ? "0" : digits;
}

bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7f; });
}

std::string utf16WithMark(const QString &text)
{
    std::string bytes("\xfe\xff", 2);
    bytes.reserve(2 + 2 * static_cast<std::size_t>(text.size()));
    for (const QChar c : text) {
        bytes.push_back(static_cast<char>(c.unicode() >> 8));
        bytes.push_back(static_cast<char>(c.unicode() & 0xff));
    }
    return bytes;
}

} // namespace

std::string number(double value)
{
    if (!std::isfinite(value))
        return "0";
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits,
                                   std::clamp(value, -LargestNumber, LargestNumber),
                                   std::chars_format::fixed, 4);
    return withoutTrailingZeros(std::string(digits, end.ptr));
}

std::string matrix(const Matrix &m)
{
    std::string text = "[";
    for (const double value : {m.a, m.b, m.c, m.d, m.e, m.f}) {
        char digits[64];
        const double safe =
            std::isfinite(value) ? std::clamp(value, -LargestNumber, LargestNumber) : 0;
        const auto end =
            std::to_chars(digits, digits + sizeof digits, safe, std::chars_format::fixed, 8);
        text += (text.size() > 1 ? " " : "") + withoutTrailingZeros(std::string(digits, end.ptr));
    }
    return text + "]";
}

std::string hexString(std::string_view bytes)
{
    static constexpr char Digits[] = "0123456789ABCDEF";
    bytes = bytes.substr(0, MaxStringBytes);
    std::string text = "<";
    text.reserve(2 * bytes.size() + 2 + bytes.size() / 100);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0 && i % 100 == 0)
            text.push_back('\n');
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text.push_back(Digits[byte >> 4]);
        text.push_back(Digits[byte & 15]);
    }
    text.push_back('>');
    return text;
}

std::string textString(const QString &text)
{
    const auto kept = text.left(static_cast<qsizetype>(MaxStringBytes / 2 - 1));
    return hexString(isAscii(kept) ? kept.toStdString() : utf16WithMark(kept));
}

bool isPlainName(std::string_view name)
{
    const auto plain = [](unsigned char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '.' || c == '_' || c == '-';
    };
    return !name.empty() && name.size() <= 120 && std::all_of(name.begin(), name.end(), plain);
}

std::string comment(const QString &text)
{
    std::string line;
    for (const QChar c : text.left(LongestComment))
        line.push_back(c.unicode() >= 0x20 && c.unicode() < 0x7f ? static_cast<char>(c.unicode())
                                                                 : '?');
    return line;
}

} // namespace Quorlin::PostScriptText
