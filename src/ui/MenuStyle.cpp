#include "ui/MenuStyle.h"

#include "ui/StyleParts.h"

#include <QBitmap>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace Quorlin {

using namespace StyleParts;

namespace {

/// Above and below the text of an entry, each.
constexpr int RoomAbove = 6;
constexpr int SideRoom = 12;
constexpr int MarkRoom = 26;
constexpr int ArrowRoom = 26;
constexpr int KeysGap = 28;
constexpr int LineRoom = 9;
constexpr int LargestRadius = 10;

/// Keys stand back behind the names of the entries.
constexpr qreal KeysShare = 0.75;

bool isLine(const QStyleOptionMenuItem &option)
{
    return option.menuItemType == QStyleOptionMenuItem::Separator;
}

bool isBranch(const QStyleOptionMenuItem &option)
{
    return option.menuItemType == QStyleOptionMenuItem::SubMenu;
}

} // namespace

/// Where the parts of an entry stand, from left to right.
struct MenuStyle::Columns
{
    explicit Columns(const QStyleOptionMenuItem &option)
    {
        const auto &rect = option.rect;
        const auto start = option.menuHasCheckableItems ? MarkRoom : SideRoom;
        mark = QRect(rect.x(), rect.y(), MarkRoom, rect.height());
        text = rect.adjusted(start, 0, -SideRoom, 0);
        arrow = QRect(rect.right() - ArrowRoom + 1, rect.y(), ArrowRoom, rect.height());
        for (auto *const part : {&mark, &text, &arrow})
            *part = QStyle::visualRect(option.direction, rect, *part);
    }

    QRect mark;
    QRect text;
    QRect arrow;
};

int MenuStyle::radius() const
{
    return std::min(m_look.corners(), LargestRadius);
}

void MenuStyle::drawPanel(const QStyleOption &option, QPainter &painter) const
{
    drawBox(painter, option.rect, m_look.colour(LookColour::Menu), lineColour(m_look),
            m_look.isBold() ? 2 : 1, radius());
}

QRegion MenuStyle::outline(const QRect &panel) const
{
    QBitmap points(panel.size());
    points.clear();
    QPainter painter(&points);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::color1);
    painter.drawRoundedRect(QRectF(QPointF(), panel.size()), radius(), radius());
    painter.end();
    return QRegion(points).translated(panel.topLeft());
}

void MenuStyle::drawItem(const QStyleOptionMenuItem &option, QPainter &painter,
                         const QStyle &style) const
{
    if (isLine(option)) {
        drawLine(option, painter);
        return;
    }
    const Columns columns(option);
    drawGround(option, painter);
    if (option.checkType != QStyleOptionMenuItem::NotCheckable && option.checked)
        drawMark(option, columns.mark, painter);
    drawTexts(option, columns, painter, style);
    if (!isBranch(option))
        return;
    QRectF square(0, 0, 12, 12);
    square.moveCenter(QRectF(columns.arrow).center());
    drawStrokes(painter, square, chevron(option.direction), textColour(option),
                m_look.isBold() ? 2.6 : 1.6);
}

void MenuStyle::drawLine(const QStyleOptionMenuItem &option, QPainter &painter) const
{
    const auto thickness = m_look.isBold() ? 2 : 1;
    const auto top = option.rect.center().y();
    painter.fillRect(option.rect.left() + SideRoom / 2, top, option.rect.width() - SideRoom,
                     thickness, lineColour(m_look));
}

/// An entry that cannot be used does not light up.
void MenuStyle::drawGround(const QStyleOptionMenuItem &option, QPainter &painter) const
{
    if (!has(option, QStyle::State_Selected))
        return;
    const auto colour =
        has(option, QStyle::State_Enabled) ? LookColour::Selection : LookColour::Hover;
    drawBox(painter, option.rect, m_look.colour(colour), {}, 0, radius() * 0.75);
}

QColor MenuStyle::textColour(const QStyleOptionMenuItem &option) const
{
    if (!has(option, QStyle::State_Enabled))
        return m_look.colour(LookColour::DisabledText);
    return m_look.colour(has(option, QStyle::State_Selected) ? LookColour::SelectionText
                                                             : LookColour::MenuText);
}

void MenuStyle::drawMark(const QStyleOptionMenuItem &option, const QRect &place,
                         QPainter &painter) const
{
    const auto side = std::min(option.fontMetrics.height(), MarkRoom - 6);
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(place).center());
    drawStrokes(painter, square, tick(), textColour(option), side / 8.0);
}

void MenuStyle::drawTexts(const QStyleOptionMenuItem &option, const Columns &columns,
                          QPainter &painter, const QStyle &style) const
{
    const auto texts = option.text.split(QLatin1Char('\t'));
    const auto hints = style.styleHint(QStyle::SH_UnderlineShortcut, &option) != 0
                           ? Qt::TextShowMnemonic
                           : Qt::TextHideMnemonic;
    const auto along = Qt::AlignVCenter | Qt::TextSingleLine | hints;
    painter.save();
    painter.setFont(option.font);
    painter.setPen(textColour(option));
    painter.drawText(columns.text, along | QStyle::visualAlignment(option.direction, Qt::AlignLeft),
                     texts.value(0));
    if (texts.size() > 1) {
        if (has(option, QStyle::State_Enabled) && !has(option, QStyle::State_Selected))
            painter.setPen(blended(m_look.colour(LookColour::MenuText),
                                   m_look.colour(LookColour::Menu), KeysShare));
        painter.drawText(columns.text,
                         along | QStyle::visualAlignment(option.direction, Qt::AlignRight),
                         texts.value(1));
    }
    painter.restore();
}

QSize MenuStyle::itemSize(const QStyleOptionMenuItem &option, const QSize &contents) const
{
    if (isLine(option))
        return {SideRoom, LineRoom};
    auto width = contents.width() + SideRoom;
    width += option.menuHasCheckableItems ? MarkRoom : SideRoom;
    if (isBranch(option))
        width += ArrowRoom;
    if (option.text.contains(QLatin1Char('\t')))
        width += KeysGap;
    return {width, option.fontMetrics.height() + 2 * RoomAbove};
}

} // namespace Quorlin
