#pragma once

#include <QColor>

class QPalette;

namespace Quorlin {

/// Colours as forms keep them: 0x00BBGGRR, or the index of a system colour with the high bit.
namespace ColorValue {

/// The system's colours by their well-known indices.
enum SystemColor : quint32 {
    ScrollBars,
    Desktop,
    ActiveTitleBar,
    InactiveTitleBar,
    MenuBar,
    WindowBackground,
    WindowFrame,
    MenuText,
    WindowText,
    TitleBarText,
    ActiveBorder,
    InactiveBorder,
    ApplicationWorkspace,
    Highlight,
    HighlightText,
    ButtonFace,
    ButtonShadow,
    GrayText,
    ButtonText,
    InactiveTitleBarText,
    ButtonHighlight,
    ButtonDarkShadow,
    ButtonLightShadow,
    InfoText,
    InfoBackground
};

/// No colour of its own: the control chooses one that can be read.
inline constexpr quint32 Computed = 0xFFFFFFFF;

[[nodiscard]] constexpr quint32 system(SystemColor color)
{
    return 0x80000000U | color;
}

/// What to draw with. An index that no system knows is black.
[[nodiscard]] QColor resolved(quint32 value, const QPalette &palette);
/// The same with the palette of the whole program, which stands for the system's colours.
[[nodiscard]] QColor resolved(quint32 value);

/// How a plain colour is kept.
[[nodiscard]] quint32 stored(const QColor &color);

/// Ratio of the luminances of two opaque colours: 1 for equal ones, 21 for black on white.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

/// The preferred colour where it stands out enough (4.5) from the background, otherwise black or
/// white, whichever stands out more.
[[nodiscard]] QColor readableOn(const QColor &background, const QColor &preferred);

/// A mixture with so much of `one`, between 0 and 1.
[[nodiscard]] QColor blended(const QColor &one, const QColor &other, double share);

} // namespace ColorValue

} // namespace Quorlin
