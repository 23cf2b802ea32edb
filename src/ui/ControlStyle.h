#pragma once

#include "skin/SkinLook.h"

#include <QRect>
#include <QStyle>

class QPainter;
class QStyleOption;
class QStyleOptionComplex;
class QStyleOptionSlider;
class QStyleOptionViewItem;

namespace Quorlin {

/// Draws the controls of the windows in the colours of a look: check boxes, choices, lists and
/// their scroll bars.
class ControlStyle
{
public:
    /// What of a choice's width is not for its text, in pixels, and where the text begins.
    static constexpr int ChoiceFrame = 38;
    static constexpr int TextStart = 10;
    static constexpr int ScrollBarWidth = 10;

    /// The look must outlive the object.
    explicit ControlStyle(const SkinLook &look) : m_look(look) {}

    void drawCheckBox(const QStyleOption &option, QPainter &painter) const;
    /// The ground of a list's entry, or of its part in one column.
    void drawEntry(const QStyleOptionViewItem &option, QPainter &painter) const;
    void drawFocusRing(const QRect &rect, QPainter &painter) const;
    /// The same around a list.
    void drawFocusFrame(const QRect &rect, QPainter &painter) const;
    /// A choice without its text.
    void drawChoice(const QStyleOptionComplex &option, QPainter &painter) const;
    void drawScrollBar(const QStyleOptionComplex &option, const QRect &slider,
                       QPainter &painter) const;
    /// A scroll bar without arrows: the slider has its whole length.
    [[nodiscard]] static QRect scrollBarPart(const QStyleOptionSlider &option,
                                             QStyle::SubControl part);

private:
    void drawRing(const QRect &rect, qreal radius, QPainter &painter) const;

    const SkinLook &m_look;
};

} // namespace Quorlin
