#pragma once

#include <qpdf/QPDFObjectHandle.hh>

#include <vector>

namespace Quorlin {

/// The items of an array; none for an object of another type.
[[nodiscard]] inline std::vector<QPDFObjectHandle> itemsOf(QPDFObjectHandle array)
{
    return array.isArray() ? array.getArrayAsVector() : std::vector<QPDFObjectHandle>();
}

} // namespace Quorlin
