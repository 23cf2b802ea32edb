#pragma once

#include <optional>
#include <string>
#include <string_view>

class QPDFObjectHandle;

namespace Quorlin {

/// The text that a property list of marked content gives in place of its glyphs, in UTF-16;
/// nothing when it gives none.
[[nodiscard]] std::optional<std::u16string> actualText(QPDFObjectHandle properties);

/// The same from the operands of an operator as they stand in the content.
[[nodiscard]] std::optional<std::u16string> actualText(std::string_view operands);

} // namespace Quorlin
