#include "component/backends/postscript/ActualText.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <QString>

#include <exception>

namespace Quorlin {

std::optional<std::u16string> actualText(QPDFObjectHandle properties)
{
    if (!properties.isDictionary())
        return std::nullopt;
    auto text = properties.getKey("/ActualText");
    if (!text.isString())
        return std::nullopt;
    return QString::fromStdString(text.getUTF8Value()).toStdU16String();
}

std::optional<std::u16string> actualText(std::string_view operands)
{
    const auto start = operands.find("<<");
    if (start == std::string_view::npos || operands.find("/ActualText") == std::string_view::npos)
        return std::nullopt;
    try {
        return actualText(QPDFObjectHandle::parse(std::string(operands.substr(start))));
    } catch (const std::exception &) {
        return std::nullopt; // a property list that cannot be read says nothing
    }
}

} // namespace Quorlin
