#include "skin/controls/LabelFace.h"

#include "skin/controls/ColorValue.h"
#include "skin/controls/DevicePixels.h"

#include <QPainter>
#include <QRect>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr qreal RoundRingWidth = 2;

LineAlignment lineAlignment(qint32 alignment)
{
    if (alignment == 0)
        return LineAlignment::Left;
    return alignment == 1 ? LineAlignment::Right : LineAlignment::Center;
}

int placed(qint32 alignment, int whole, int extent, int margin)
{
    const auto first = alignment == 0   ? margin
                       : alignment == 1 ? whole - extent - margin
                                        : (whole - extent) / 2;
    return std::max(first, margin);
}

} // namespace

int LabelFace::borderWidth() const
{
    switch (border) {
    case Border::None:
        return 0;
    case Border::Flat:
        return 1;
    case Border::Sunken:
        break;
    }
    return 2;
}

QRect LabelFace::inside() const
{
    const auto margin = borderWidth();
    return QRect(QPoint(), size).adjusted(margin, margin, -margin, -margin);
}

TextBlock LabelFace::textBlock() const
{
    return {text, font, std::max(inside().width(), 0), wrap, lineAlignment(alignment)};
}

QPoint LabelFace::textPosition(QSize textSize) const
{
    const auto margin = borderWidth();
    return {placed(alignment, size.width(), textSize.width(), margin),
            placed(verticalAlignment, size.height(), textSize.height(), margin)};
}

QSize LabelFace::fittingSize() const
{
    const auto margins = 2 * borderWidth();
    const auto room = wrap ? std::max(inside().width(), 1) : TextBlock::Unlimited;
    const TextBlock block(text, font, room, wrap, LineAlignment::Left);
    const auto width = wrap ? size.width() : block.size().width() + margins;
    return {width, block.size().height() + margins};
}

void LabelFace::draw(QPainter &painter) const
{
    const QRect all(QPoint(), size);
    if (backColor.isValid())
        DevicePixels::fill(painter, all, backColor);
    if (veil.isValid())
        drawLayer(painter, veil);
    if (tint > 0) {
        auto layer = textColor;
        layer.setAlpha(tint);
        drawLayer(painter, layer);
    }
    drawText(painter);
    drawBorder(painter);
    if (hasFocusRing)
        drawFocusRing(painter);
}

void LabelFace::drawText(QPainter &painter) const
{
    if (text.shown().isEmpty() || inside().isEmpty())
        return;
    const auto block = textBlock();
    painter.save();
    painter.setClipRect(inside(), Qt::IntersectClip);
    block.draw(painter, textPosition(block.size()), textColor);
    painter.restore();
}

void LabelFace::drawBorder(QPainter &painter) const
{
    if (border == Border::None)
        return;
    const auto lit =
        border == Border::Flat ? borderColor : ColorValue::blended(borderColor, Qt::white, 0.4);
    DevicePixels::frame(painter, QRect(QPoint(), size), borderWidth(), borderColor, lit);
}

void LabelFace::drawLayer(QPainter &painter, const QColor &color) const
{
    if (cornerRadius > 0)
        drawRound(painter, Qt::NoPen, color);
    else
        DevicePixels::fill(painter, QRect(QPoint(), size), color);
}

void LabelFace::drawFocusRing(QPainter &painter) const
{
    if (cornerRadius > 0) {
        drawRound(painter, QPen(focusColor, RoundRingWidth), Qt::NoBrush);
        return;
    }
    const auto margin = borderWidth();
    const auto ring = QRect(QPoint(), size).adjusted(margin, margin, -margin, -margin);
    DevicePixels::frame(painter, ring, 1, focusColor, focusColor);
}

/// The outline lies inside the label.
void LabelFace::drawRound(QPainter &painter, const QPen &pen, const QBrush &brush) const
{
    const auto inset = pen.style() == Qt::NoPen ? 0 : pen.widthF() / 2;
    const auto outline = QRectF(QPointF(), size).adjusted(inset, inset, -inset, -inset);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.drawRoundedRect(outline, cornerRadius, cornerRadius);
    painter.restore();
}

} // namespace Quorlin
