#include "skin/controls/LabelStates.h"

namespace Quorlin {

QColor LabelStates::currentTextColor(quint32 textColor) const
{
    if (!isEnabled() && m_disabledTextColor != ColorValue::Computed)
        return ColorValue::resolved(m_disabledTextColor);
    auto color = ColorValue::resolved(textColor);
    if (!isEnabled())
        color.setAlphaF(0.5F);
    return color;
}

QColor LabelStates::currentFocusColor(quint32 textColor) const
{
    if (m_focusColor == ColorValue::Computed)
        return currentTextColor(textColor);
    return ColorValue::resolved(m_focusColor);
}

QColor LabelStates::currentVeil() const
{
    constexpr float Opacity = 0.72F;
    if (isEnabled() || !Clickable() || m_veilColor == ColorValue::Computed)
        return {};
    auto color = ColorValue::resolved(m_veilColor);
    color.setAlphaF(Opacity);
    return color;
}

} // namespace Quorlin
