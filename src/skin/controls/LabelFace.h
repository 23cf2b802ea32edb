#pragma once

#include "skin/controls/LabelText.h"
#include "skin/controls/TextBlock.h"

#include <QColor>
#include <QFont>
#include <QPoint>
#include <QSize>

class QPainter;
class QRect;

namespace Quorlin {

/// All that a label looks like at one moment; draws it. Two equal faces give equal pictures.
/// Lengths are device-independent pixels.
struct LabelFace
{
    enum class Border { None, Flat, Sunken };

    QSize size;
    LabelText text;
    QFont font;
    bool wrap = false;
    /// 0 left, 1 right, anything else centre.
    qint32 alignment = 0;
    /// 0 top, 1 bottom, anything else centre.
    qint32 verticalAlignment = 0;
    Border border = Border::None;
    QColor borderColor;
    QColor textColor;
    /// Invalid: what lies behind shows through.
    QColor backColor;
    /// How much a layer of the text's colour tints the background, 0 to 255: the label is under
    /// the mouse or held down.
    int tint = 0;
    /// Laid over the background, below the text; invalid for none.
    QColor veil;
    bool hasFocusRing = false;
    QColor focusColor;
    /// Of the tint, the veil and the focus ring, which then is two pixels wide; 0 for square ones.
    int cornerRadius = 0;

    /// How wide a border of this kind is on each side: 1 when flat, 2 when sunken.
    [[nodiscard]] int borderWidth() const;
    /// What is left inside the border.
    [[nodiscard]] QRect inside() const;
    /// The text, laid out for this room.
    [[nodiscard]] TextBlock textBlock() const;
    /// Where a text of this size begins. One without room begins where the room does.
    [[nodiscard]] QPoint textPosition(QSize textSize) const;
    /// The size that has just room for the text, at the present width when it wraps.
    [[nodiscard]] QSize fittingSize() const;

    void draw(QPainter &painter) const;

    bool operator==(const LabelFace &) const = default;

private:
    void drawText(QPainter &painter) const;
    void drawBorder(QPainter &painter) const;
    void drawLayer(QPainter &painter, const QColor &color) const;
    void drawFocusRing(QPainter &painter) const;
    void drawRound(QPainter &painter, const QPen &pen, const QBrush &brush) const;
};

} // namespace Quorlin
