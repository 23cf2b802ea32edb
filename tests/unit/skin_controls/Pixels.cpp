#include "Pixels.h"

#include "skin/controls/ColorValue.h"

#include <QWidget>

namespace Quorlin::Pixels {

QImage painted(QWidget &widget, const QColor &background, qreal scale)
{
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(background);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

QRect inkBox(const QImage &image, const QColor &background)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != background.rgb())
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

int countOf(const QImage &image, const QColor &color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == color.rgb() ? 1 : 0;
    }
    return count;
}

Strongest strongest(const QImage &image, const QColor &background)
{
    Strongest found{1, background};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color(image.pixel(x, y));
            const auto contrast = ColorValue::contrast(color, background);
            if (contrast > found.contrast)
                found = {contrast, color};
        }
    }
    return found;
}

QFont font(int pixels)
{
    QFont result(QStringLiteral("DejaVu Sans"));
    result.setPixelSize(pixels);
    return result;
}

} // namespace Quorlin::Pixels
