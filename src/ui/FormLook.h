#pragma once

#include "skin/SkinPicture.h"

#include <QFont>
#include <QSize>
#include <QString>

class QComboBox;
class QWidget;

namespace Quorlin {

class KelLabel;
class SkinLook;

/// What the windows have in common in wearing a look.
namespace FormLook {

/// Of the program's sign in a title bar, in pixels.
inline constexpr QSize IconSize{20, 20};

/// No text is made smaller than this, in pixels.
inline constexpr int LeastFont = 9;

/// A font of the look, adapted to the system's locale: East Asian ones are never smaller than 12
/// pixels.
/// @param pixels height of the font. @param isHeading bold, also where the look is not.
[[nodiscard]] QFont font(const SkinLook &look, int pixels, bool isHeading = false);

/// A picture of the windows' own design, which the built-in layout shows.
/// @param name "Main", "Info" or "About".
[[nodiscard]] SkinPicture design(const QString &name);

/// The largest of the sizes from a font's own down to LeastFont in which a label's text fits;
/// lines are joined first when there is room for one only. A text that can be read whole is worth
/// more than the least size of East Asian fonts. Where nothing fits, the label shows the
/// beginning.
void fitText(KelLabel &label);

/// The same for the entries of a choice.
void fitChoice(QComboBox &choice);

/// Gives a window and everything on it the look's style, palette, font and text colours.
void apply(const SkinLook &look, QWidget &window);

/// The colours of a title bar for one of its labels.
void applyTitle(const SkinLook &look, KelLabel &label);

} // namespace FormLook

} // namespace Quorlin
