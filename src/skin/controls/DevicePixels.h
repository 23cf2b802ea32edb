#pragma once

#include <QRect>

class QColor;
class QPainter;

namespace Quorlin {

/// Draws on whole pixels of the device at every scale: at 150 % an edge that falls between two
/// pixels is moved to one of them and never blended. Lengths are device-independent pixels.
namespace DevicePixels {

/// Where a rectangle lies on the device, its edges rounded.
[[nodiscard]] QRect mapped(const QPainter &painter, const QRect &rect);

void fill(QPainter &painter, const QRect &rect, const QColor &color);

/// A frame along the inside of a rectangle, all sides of one width.
void frame(QPainter &painter, const QRect &rect, int width, const QColor &topLeft,
           const QColor &bottomRight);

} // namespace DevicePixels

} // namespace Quorlin
