#pragma once

#include <QString>

namespace Quorlin {

/// Texts measured in the columns of a terminal, in any script.
namespace Columns {

[[nodiscard]] int widthOf(const QString &text);

/// The text with spaces behind it up to the width; longer texts stay as they are.
[[nodiscard]] QString padded(const QString &text, int width);

/// The text in at most so many columns: of a longer one the middle gives way to "…", so that
/// the beginning and the extension of a name stay. Marks stay with what they combine with.
/// @param width from 1.
[[nodiscard]] QString shortened(const QString &text, int width);

/// The same for a sentence, which loses its end.
[[nodiscard]] QString cut(const QString &text, int width);

} // namespace Columns

} // namespace Quorlin
