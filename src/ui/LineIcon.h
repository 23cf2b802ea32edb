#pragma once

#include <QColor>
#include <QIconEngine>
#include <QList>
#include <QPolygonF>

namespace Quorlin {

/// An icon that is drawn anew at every size: lines, or a disc with a sign on it.
class LineIcon : public QIconEngine
{
public:
    /// @param strokes on a square of side 1.
    LineIcon(QList<QPolygonF> strokes, const QColor &colour, const QColor &selected,
             const QColor &disabled);
    LineIcon(QChar sign, const QColor &disc, const QColor &text);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine *clone() const override;

private:
    void drawDisc(QPainter &painter, const QRectF &square) const;

    QList<QPolygonF> m_strokes;
    QChar m_sign;
    QColor m_colour; ///< of the lines or of the disc
    QColor m_selected;
    QColor m_disabled;
    QColor m_text;
};

} // namespace Quorlin
