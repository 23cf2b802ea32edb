#pragma once

#include <QFont>
#include <QSize>

class QWidget;

namespace Quorlin {

class SkinLook;

/// What the windows have in common in wearing a look.
namespace FormLook {

/// Of the program's sign in a title bar, in pixels.
inline constexpr QSize IconSize{20, 20};

/// @param pixels height of the font. @param isHeading bold, also where the look is not.
[[nodiscard]] QFont font(const SkinLook &look, int pixels, bool isHeading = false);

/// Gives a window and everything on it the look's style, palette, font and text colours.
void apply(const SkinLook &look, QWidget &window);

} // namespace FormLook

} // namespace Quorlin
