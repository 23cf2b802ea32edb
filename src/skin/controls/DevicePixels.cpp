#include "skin/controls/DevicePixels.h"

#include <QColor>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace Quorlin::DevicePixels {

namespace {

/// While it lives, the painter counts in pixels of the device.
class OnDevice
{
public:
    explicit OnDevice(QPainter &painter) : m_painter(painter)
    {
        m_painter.save();
        m_painter.setWorldTransform(m_painter.deviceTransform().inverted(), true);
    }
    ~OnDevice() { m_painter.restore(); }
    OnDevice(const OnDevice &) = delete;
    OnDevice &operator=(const OnDevice &) = delete;

private:
    QPainter &m_painter;
};

} // namespace

QRect mapped(const QPainter &painter, const QRect &rect)
{
    const auto exact = painter.deviceTransform().mapRect(QRectF(rect));
    const QPoint first(qRound(exact.left()), qRound(exact.top()));
    const QPoint behind(qRound(exact.right()), qRound(exact.bottom()));
    return {first, QSize(behind.x() - first.x(), behind.y() - first.y())};
}

void fill(QPainter &painter, const QRect &rect, const QColor &color)
{
    const auto pixels = mapped(painter, rect);
    const OnDevice device(painter);
    painter.fillRect(pixels, color);
}

void frame(QPainter &painter, const QRect &rect, int width, const QColor &topLeft,
           const QColor &bottomRight)
{
    const auto all = mapped(painter, rect);
    const auto scale = painter.deviceTransform().m11();
    const auto line = std::max(1, int(std::floor(width * scale)));
    if (all.width() < 2 * line || all.height() < 2 * line)
        return;
    const OnDevice device(painter);
    painter.fillRect(all.x(), all.y(), all.width(), line, topLeft);
    painter.fillRect(all.x(), all.y(), line, all.height(), topLeft);
    painter.fillRect(all.x() + line, all.bottom() + 1 - line, all.width() - line, line,
                     bottomRight);
    painter.fillRect(all.right() + 1 - line, all.y() + line, line, all.height() - line,
                     bottomRight);
}

} // namespace Quorlin::DevicePixels
