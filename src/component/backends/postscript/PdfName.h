#pragma once

#include <string>
#include <string_view>

namespace Quorlin {

/// The letters of a name as contents write it: without its slash, "#41" read as "A".
[[nodiscard]] std::string decodedName(std::string_view token);

} // namespace Quorlin
