#pragma once

#include <string>

namespace Quorlin {

/// The name of a glyph that tells its text, as readers of fonts understand it: "uni05E9",
/// "uni00660069", "u1F600". Empty for a text that no name can tell or that is too long.
/// @param text in UTF-16.
[[nodiscard]] std::string glyphName(const std::u16string &text);

} // namespace Quorlin
