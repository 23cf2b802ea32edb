#pragma once

#include <QStringView>

namespace Quorlin {

/// The number that a text starts with: blanks, a sign, decimal digits with a point, an exponent
/// (E or D). What follows does not count, and no comma is part of a number.
/// @return rounded to the nearest whole number, halves to the even one; 0 for a text that does
/// not start with a number, and for one outside of -32768 to 32767.
[[nodiscard]] qint16 leadingNumber(QStringView text);

} // namespace Quorlin
