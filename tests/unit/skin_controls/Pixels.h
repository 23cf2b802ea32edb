#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRect>

class QWidget;

namespace Quorlin {

/// What tests see of a painted widget.
namespace Pixels {

/// A widget painted onto a background.
/// @param scale pixels for one device-independent pixel.
[[nodiscard]] QImage painted(QWidget &widget, const QColor &background = Qt::white,
                             qreal scale = 1);

/// The pixels that differ from a colour, in pixels of the image; null when there are none.
[[nodiscard]] QRect inkBox(const QImage &image, const QColor &background = Qt::white);

/// How many pixels have just this colour.
[[nodiscard]] int countOf(const QImage &image, const QColor &color);

/// The pixel that stands out most from a background: how it does, and its colour.
struct Strongest
{
    double contrast = 1;
    QColor color;
};
[[nodiscard]] Strongest strongest(const QImage &image, const QColor &background);

/// A font of which the tests know that it is there.
[[nodiscard]] QFont font(int pixels = 16);

} // namespace Pixels

} // namespace Quorlin
