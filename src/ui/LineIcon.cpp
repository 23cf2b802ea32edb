#include "ui/LineIcon.h"

#include "ui/StyleParts.h"

#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <utility>

namespace Quorlin {

namespace {

/// Of a line, as a part of the icon's side.
constexpr qreal LineShare = 0.085;
constexpr qreal ThinnestLine = 1.2;

QColor of(QIcon::Mode mode, const QColor &normal, const QColor &selected, const QColor &disabled)
{
    if (mode == QIcon::Disabled)
        return disabled;
    return mode == QIcon::Selected ? selected : normal;
}

} // namespace

LineIcon::LineIcon(QList<QPolygonF> strokes, const QColor &colour, const QColor &selected,
                   const QColor &disabled)
    : m_strokes(std::move(strokes)), m_colour(colour), m_selected(selected), m_disabled(disabled)
{
}

LineIcon::LineIcon(QChar sign, const QColor &disc, const QColor &text)
    : m_sign(sign), m_colour(disc), m_text(text)
{
}

void LineIcon::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State)
{
    const auto side = std::min(rect.width(), rect.height());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(rect).center());
    if (!m_sign.isNull()) {
        drawDisc(*painter, square);
        return;
    }
    const auto colour = of(mode, m_colour, m_selected, m_disabled);
    for (const auto &stroke : std::as_const(m_strokes))
        StyleParts::drawStrokes(*painter, square, stroke, colour,
                                std::max(side * LineShare, ThinnestLine));
}

void LineIcon::drawDisc(QPainter &painter, const QRectF &square) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_colour);
    painter.drawEllipse(square);
    auto font = painter.font();
    font.setPixelSize(std::max(int(square.height() * 0.68), 1));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(m_text);
    painter.drawText(square, Qt::AlignCenter, QString(m_sign));
    painter.restore();
}

QPixmap LineIcon::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect({}, size), mode, state);
    return picture;
}

QIconEngine *LineIcon::clone() const
{
    return new LineIcon(*this);
}

} // namespace Quorlin
