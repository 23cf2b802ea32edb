#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QStyle>

class QStyleOption;

namespace Quorlin {
class SkinLook;
}

namespace Quorlin::StyleParts {

/// A line of this width through the middles of the edge's pixels.
[[nodiscard]] QRectF edgeOf(const QRect &rect, qreal width);

[[nodiscard]] bool has(const QStyleOption &option, QStyle::StateFlag flag);

/// What is seen of a colour that lies over an opaque one.
[[nodiscard]] QColor blended(const QColor &over, const QColor &under);
/// The same with a share of the upper colour, from 0 to 1.
[[nodiscard]] QColor blended(const QColor &over, const QColor &under, qreal share);

/// Of the lines around fields and panels.
[[nodiscard]] QColor lineColour(const SkinLook &look);

/// An area with a line around it, which lies within the rectangle.
void drawBox(QPainter &painter, const QRect &rect, const QColor &fill, const QColor &line,
             qreal width, qreal radius);

/// A line through points of a square of side 1, which is laid on the rectangle.
void drawStrokes(QPainter &painter, const QRectF &square, const QPolygonF &points,
                 const QColor &colour, qreal width);

[[nodiscard]] const QPolygonF &tick();
/// Points right in a layout from left to right, else left.
[[nodiscard]] QPolygonF chevron(Qt::LayoutDirection direction);

} // namespace Quorlin::StyleParts
