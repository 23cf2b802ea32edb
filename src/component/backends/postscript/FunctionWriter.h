#pragma once

#include <optional>
#include <string>

class QPDFObjectHandle;

namespace Quorlin {

/// A PDF function of one variable, or an array of them, as a PostScript function dictionary.
/// Sampled, exponential and stitching functions are known; nothing for any other.
[[nodiscard]] std::optional<std::string> functionText(QPDFObjectHandle function);

} // namespace Quorlin
