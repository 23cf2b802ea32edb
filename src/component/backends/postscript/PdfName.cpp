#include "component/backends/postscript/PdfName.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <charconv>

namespace Quorlin {

std::string decodedName(std::string_view token)
{
    if (!token.empty() && token.front() == '/')
        token.remove_prefix(1);
    std::string name;
    name.reserve(token.size());
    for (std::size_t i = 0; i < token.size(); ++i) {
        unsigned value = 0;
        const auto *digits = token.data() + i + 1;
        if (token[i] == '#' && i + 2 < token.size() &&
            std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
            name.push_back(static_cast<char>(value));
            i += 2;
        } else {
            name.push_back(token[i]);
        }
    }
    return name;
}

std::string lettersOf(QPDFObjectHandle name)
{
    return name.isName() ? name.getName().substr(1) : std::string();
}

} // namespace Quorlin
