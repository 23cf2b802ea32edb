#include "skin/controls/ColorValue.h"

#include <QGuiApplication>
#include <QPalette>

#include <array>
#include <cmath>

namespace Quorlin::ColorValue {

namespace {

constexpr quint32 SystemBit = 0x80000000U;

constexpr std::array Roles = {
    QPalette::Mid,             // ScrollBars
    QPalette::Dark,            // Desktop
    QPalette::Highlight,       // ActiveTitleBar
    QPalette::Midlight,        // InactiveTitleBar
    QPalette::Window,          // MenuBar
    QPalette::Base,            // WindowBackground
    QPalette::WindowText,      // WindowFrame
    QPalette::WindowText,      // MenuText
    QPalette::Text,            // WindowText
    QPalette::HighlightedText, // TitleBarText
    QPalette::Window,          // ActiveBorder
    QPalette::Window,          // InactiveBorder
    QPalette::Mid,             // ApplicationWorkspace
    QPalette::Highlight,       // Highlight
    QPalette::HighlightedText, // HighlightText
    QPalette::Button,          // ButtonFace
    QPalette::Dark,            // ButtonShadow
    QPalette::WindowText,      // GrayText, from the disabled colours
    QPalette::ButtonText,      // ButtonText
    QPalette::Dark,            // InactiveTitleBarText
    QPalette::Light,           // ButtonHighlight
    QPalette::Shadow,          // ButtonDarkShadow
    QPalette::Midlight,        // ButtonLightShadow
    QPalette::ToolTipText,     // InfoText
    QPalette::ToolTipBase,     // InfoBackground
};
static_assert(Roles.size() == InfoBackground + 1);

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

} // namespace

QColor resolved(quint32 value, const QPalette &palette)
{
    if ((value & SystemBit) == 0)
        return {int(value & 0xFF), int(value >> 8 & 0xFF), int(value >> 16 & 0xFF)};
    const auto index = value & 0x00FFFFFF;
    if (index >= Roles.size())
        return Qt::black;
    const auto group = index == GrayText ? QPalette::Disabled : QPalette::Active;
    return palette.color(group, Roles[index]);
}

QColor resolved(quint32 value)
{
    return resolved(value, QGuiApplication::palette());
}

quint32 stored(const QColor &color)
{
    return quint32(color.red()) | quint32(color.green()) << 8 | quint32(color.blue()) << 16;
}

double contrast(const QColor &one, const QColor &other)
{
    const auto first = luminance(one) + 0.05;
    const auto second = luminance(other) + 0.05;
    return first > second ? first / second : second / first;
}

QColor readableOn(const QColor &background, const QColor &preferred)
{
    constexpr double Enough = 4.5;
    if (contrast(background, preferred) >= Enough)
        return preferred;
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return contrast(background, black) >= contrast(background, white) ? black : white;
}

QColor blended(const QColor &one, const QColor &other, double share)
{
    const auto mixed = [share](int first, int second) {
        return int(std::lround(first * share + second * (1.0 - share)));
    };
    return {mixed(one.red(), other.red()), mixed(one.green(), other.green()),
            mixed(one.blue(), other.blue())};
}

} // namespace Quorlin::ColorValue
