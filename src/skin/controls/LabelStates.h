#pragma once

#include "skin/controls/ColorValue.h"
#include "skin/controls/LabelSurface.h"

namespace Quorlin {

/// How a label looks that is disabled, has the focus or is under the mouse.
///
/// Every property has two accessors of its name; a new value is redrawn, the old one again does
/// nothing. Colours are those of ColorValue, lengths device-independent pixels.
class LabelStates : public LabelSurface
{
    Q_OBJECT
    /// Text of a disabled label; ColorValue::Computed lets the background shine through the text.
    Q_PROPERTY(quint32 DisabledTextColor READ DisabledTextColor WRITE DisabledTextColor)
    /// Of the veil, the tint under the mouse and the focus ring; 0 for square ones.
    Q_PROPERTY(qint32 CornerRadius READ CornerRadius WRITE CornerRadius)
    /// Of the focus ring; ColorValue::Computed: the text's.
    Q_PROPERTY(quint32 FocusColor READ FocusColor WRITE FocusColor)
    /// Laid over what lies behind a disabled label that is clickable, at 72 % opacity, below its
    /// own text; ColorValue::Computed: none.
    Q_PROPERTY(quint32 VeilColor READ VeilColor WRITE VeilColor)

public:
    using LabelSurface::LabelSurface;

    [[nodiscard]] quint32 DisabledTextColor() const { return m_disabledTextColor; }
    void DisabledTextColor(quint32 value) { store(m_disabledTextColor, value); }
    [[nodiscard]] qint32 CornerRadius() const { return m_cornerRadius; }
    void CornerRadius(qint32 value) { store(m_cornerRadius, value); }
    [[nodiscard]] quint32 FocusColor() const { return m_focusColor; }
    void FocusColor(quint32 value) { store(m_focusColor, value); }
    [[nodiscard]] quint32 VeilColor() const { return m_veilColor; }
    void VeilColor(quint32 value) { store(m_veilColor, value); }

    /// Redraws the label.
    virtual void Refresh() = 0;

protected:
    template <typename T>
    void store(T &member, T value)
    {
        if (member == value)
            return;
        member = value;
        Refresh();
    }

    /// The text's colour now, of a text that has this one while it is enabled.
    [[nodiscard]] QColor currentTextColor(quint32 textColor) const;
    [[nodiscard]] QColor currentFocusColor(quint32 textColor) const;
    /// Invalid: none now.
    [[nodiscard]] QColor currentVeil() const;

private:
    quint32 m_disabledTextColor = ColorValue::Computed;
    qint32 m_cornerRadius = 0;
    quint32 m_focusColor = ColorValue::Computed;
    quint32 m_veilColor = ColorValue::Computed;
};

} // namespace Quorlin
