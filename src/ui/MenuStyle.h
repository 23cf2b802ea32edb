#pragma once

#include "skin/SkinLook.h"

#include <QRegion>
#include <QSize>

class QPainter;
class QStyle;
class QStyleOption;
class QStyleOptionMenuItem;

namespace Quorlin {

/// Draws menus in the colours of a look: a panel with round corners, entries with room around
/// them, thin lines between groups.
class MenuStyle
{
public:
    /// Of the panel, around the entries, in pixels; its frame lies within.
    static constexpr int Margin = 5;

    /// The look must outlive the object.
    explicit MenuStyle(const SkinLook &look) : m_look(look) {}

    /// The ground of a whole menu and the line around it.
    void drawPanel(const QStyleOption &option, QPainter &painter) const;
    void drawItem(const QStyleOptionMenuItem &option, QPainter &painter, const QStyle &style) const;
    /// @param contents of the text, without the keys beside it.
    [[nodiscard]] QSize itemSize(const QStyleOptionMenuItem &option, const QSize &contents) const;
    /// The points of a panel on a screen that shows no transparency.
    [[nodiscard]] QRegion outline(const QRect &panel) const;

private:
    struct Columns;

    [[nodiscard]] int radius() const;
    [[nodiscard]] QColor textColour(const QStyleOptionMenuItem &option) const;
    void drawLine(const QStyleOptionMenuItem &option, QPainter &painter) const;
    void drawGround(const QStyleOptionMenuItem &option, QPainter &painter) const;
    void drawMark(const QStyleOptionMenuItem &option, const QRect &place, QPainter &painter) const;
    void drawTexts(const QStyleOptionMenuItem &option, const Columns &columns, QPainter &painter,
                   const QStyle &style) const;

    const SkinLook &m_look;
};

} // namespace Quorlin
