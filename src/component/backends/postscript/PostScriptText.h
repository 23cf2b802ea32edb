#pragma once

#include "component/backends/postscript/Matrix.h"

#include <QString>

#include <string>
#include <string_view>

namespace Quorlin::PostScriptText {

/// Longest string that any PostScript interpreter must hold, in bytes.
inline constexpr std::size_t MaxStringBytes = 65535;

/// A number that PostScript and PDF both read, with at most four decimals; 0 when it is not finite.
[[nodiscard]] std::string number(double value);

/// The numbers of a matrix in brackets.
[[nodiscard]] std::string matrix(const Matrix &matrix);

/// Bytes as a hexadecimal string, so that nothing in them can end it. Cut at MaxStringBytes.
[[nodiscard]] std::string hexString(std::string_view bytes);

/// Text as a hexadecimal string: ASCII as it is, anything else as UTF-16BE with its mark.
[[nodiscard]] std::string textString(const QString &text);

/// True for a name that can be written after a slash without any escape.
[[nodiscard]] bool isPlainName(std::string_view name);

/// One line of printable ASCII for a comment, other characters replaced by "?"; at most 200 bytes.
[[nodiscard]] std::string comment(const QString &text);

} // namespace Quorlin::PostScriptText
