#include "component/backends/postscript/FunctionWriter.h"

#include "component/backends/postscript/ObjectNumbers.h"
#include "component/backends/postscript/PostScriptText.h"
#include "component/backends/postscript/StreamBytes.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr int MaxDepth = 4;
constexpr int MaxParts = 256;
/// Functions that share their parts would multiply them, level by level.
constexpr int MaxAllParts = 1024;
constexpr std::size_t MaxBytes = 1024 * 1024;

std::string entry(QPDFObjectHandle dictionary, const std::string &key)
{
    auto value = dictionary.getKey("/" + key);
    return value.isArray() ? " /" + key + " " + bracketed(numbersOf(value, 4 * MaxParts)) : "";
}

long long integer(QPDFObjectHandle dictionary, const char *key)
{
    auto value = dictionary.getKey(key);
    return value.isInteger() ? value.getIntValue() : 0;
}

std::optional<std::string> sampled(QPDFObjectHandle function)
{
    if (!function.isStream())
        return std::nullopt;
    auto dictionary = function.getDict();
    const auto size = numbersOf(dictionary.getKey("/Size"));
    const auto range = numbersOf(dictionary.getKey("/Range"));
    const auto bits = integer(dictionary, "/BitsPerSample");
    const auto samples = streamBytes(function, PostScriptText::MaxStringBytes);
    if (!samples || size.size() != 1 || size[0] < 1 || size[0] > 65535 || range.size() % 2 != 0 ||
        range.empty() ||
        (bits != 1 && bits != 2 && bits != 4 && bits != 8 && bits != 12 && bits != 16 &&
         bits != 24 && bits != 32))
        return std::nullopt;
    const double needed =
        size[0] * static_cast<double>(bits) * static_cast<double>(range.size()) / 16;
    if (static_cast<double>(samples->size()) < needed)
        return std::nullopt;
    return "<< /FunctionType 0" + entry(dictionary, "Domain") + entry(dictionary, "Range") +
           entry(dictionary, "Size") + " /BitsPerSample " + std::to_string(bits) +
           entry(dictionary, "Encode") + entry(dictionary, "Decode") + " /DataSource " +
           PostScriptText::hexString(*samples) + " >>";
}

std::optional<std::string> exponential(QPDFObjectHandle dictionary)
{
    auto exponent = dictionary.getKey("/N");
    if (!exponent.isNumber())
        return std::nullopt;
    return "<< /FunctionType 2" + entry(dictionary, "Domain") + entry(dictionary, "Range") +
           entry(dictionary, "C0") + entry(dictionary, "C1") + " /N " +
           PostScriptText::number(exponent.getNumericValue()) + " >>";
}

/// Writes one function with all its parts.
class FunctionText
{
public:
    std::optional<std::string> write(QPDFObjectHandle function, int depth);

private:
    std::optional<std::string> list(QPDFObjectHandle functions, int depth);
    std::optional<std::string> stitching(QPDFObjectHandle dictionary, int depth);

    int m_parts = 0;
};

std::optional<std::string> FunctionText::list(QPDFObjectHandle functions, int depth)
{
    if (functions.getArrayNItems() < 1 || functions.getArrayNItems() > MaxParts)
        return std::nullopt;
    std::string text = "[";
    for (auto function : functions.aitems()) {
        const auto part = write(function, depth + 1);
        if (!part || text.size() + part->size() > MaxBytes)
            return std::nullopt;
        text += *part + "\n";
    }
    return text + "]";
}

std::optional<std::string> FunctionText::stitching(QPDFObjectHandle dictionary, int depth)
{
    auto functions = dictionary.getKey("/Functions");
    const auto parts = functions.isArray() ? list(functions, depth) : std::nullopt;
    if (!parts)
        return std::nullopt;
    const auto count = static_cast<std::size_t>(functions.getArrayNItems());
    const auto bounds = numbersOf(dictionary.getKey("/Bounds"), MaxParts);
    const auto encode = numbersOf(dictionary.getKey("/Encode"), 4 * MaxParts);
    if (bounds.size() + 1 != count || encode.size() != 2 * count ||
        !std::is_sorted(bounds.begin(), bounds.end()))
        return std::nullopt;
    return "<< /FunctionType 3" + entry(dictionary, "Domain") + entry(dictionary, "Range") +
           " /Functions " + *parts + " /Bounds " + bracketed(bounds) + " /Encode " +
           bracketed(encode) + " >>";
}

std::optional<std::string> FunctionText::write(QPDFObjectHandle function, int depth)
{
    if (depth > MaxDepth || ++m_parts > MaxAllParts)
        return std::nullopt;
    if (function.isArray())
        return list(function, depth);
    auto dictionary = function.isStream() ? function.getDict() : function;
    if (!dictionary.isDictionary() || numbersOf(dictionary.getKey("/Domain")).size() != 2)
        return std::nullopt;
    switch (integer(dictionary, "/FunctionType")) {
    case 0:
        return sampled(function);
    case 2:
        return exponential(dictionary);
    case 3:
        return stitching(dictionary, depth);
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<std::string> functionText(QPDFObjectHandle function)
{
    return FunctionText().write(function, 0);
}

} // namespace Quorlin
