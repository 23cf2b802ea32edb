#pragma once

#include <string>
#include <string_view>

class QPDFObjectHandle;

namespace Quorlin {

/// The letters of a name as contents write it: without its slash, "#41" read as "A".
[[nodiscard]] std::string decodedName(std::string_view token);

/// The letters of a name object, without its slash; empty for an object of another type.
[[nodiscard]] std::string lettersOf(QPDFObjectHandle name);

} // namespace Quorlin
