#include "ui/StyleParts.h"

#include "skin/SkinLook.h"

#include <QStyleOption>

namespace Quorlin::StyleParts {

QRectF edgeOf(const QRect &rect, qreal width)
{
    return QRectF(rect).adjusted(width / 2, width / 2, -width / 2, -width / 2);
}

bool has(const QStyleOption &option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

QColor blended(const QColor &over, const QColor &under)
{
    return blended(over, under, 1);
}

QColor blended(const QColor &over, const QColor &under, qreal share)
{
    const auto part = float(share) * over.alphaF();
    const auto mix = [part](float a, float b) { return a * part + b * (1 - part); };
    return QColor::fromRgbF(mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()),
                            mix(over.blueF(), under.blueF()));
}

QColor lineColour(const SkinLook &look)
{
    // A dark panel needs more of the line's colour than a light one to show an edge.
    constexpr qreal share = 0.6;
    return blended(look.colour(LookColour::FieldBorder), look.colour(LookColour::Menu),
                   look.isBold() ? 1 : share);
}

void drawBox(QPainter &painter, const QRect &rect, const QColor &fill, const QColor &line,
             qreal width, qreal radius)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(width > 0 ? QPen(line, width) : QPen(Qt::NoPen));
    painter.setBrush(fill);
    painter.drawRoundedRect(edgeOf(rect, width), radius, radius);
    painter.restore();
}

void drawStrokes(QPainter &painter, const QRectF &square, const QPolygonF &points,
                 const QColor &colour, qreal width)
{
    auto placed = points;
    for (auto &point : placed)
        point = square.topLeft() + QPointF(point.x() * square.width(), point.y() * square.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(placed);
    painter.restore();
}

const QPolygonF &tick()
{
    static const QPolygonF points{{0.26, 0.53}, {0.43, 0.69}, {0.75, 0.33}};
    return points;
}

QPolygonF chevron(Qt::LayoutDirection direction)
{
    const auto tip = direction == Qt::RightToLeft ? 0.35 : 0.65;
    return {{1 - tip, 0.2}, {tip, 0.5}, {1 - tip, 0.8}};
}

} // namespace Quorlin::StyleParts
