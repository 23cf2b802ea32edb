#include "ui/ControlStyle.h"

#include "ui/StyleParts.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace Quorlin {

using namespace StyleParts;

namespace {

constexpr int ArrowRoom = ControlStyle::ChoiceFrame - ControlStyle::TextStart;
constexpr int LeastSlider = 24;
/// How much of its colour a selected entry keeps in a list that is disabled.
constexpr qreal DisabledSelection = 0.3;

} // namespace

void ControlStyle::drawCheckBox(const QStyleOption &option, QPainter &painter) const
{
    const auto isOn = has(option, QStyle::State_On);
    const auto isEnabled = has(option, QStyle::State_Enabled);
    const auto side = std::min(option.rect.width(), option.rect.height());
    const QRect square(option.rect.topLeft(), QSize(side, side));
    auto line = m_look.colour(LookColour::FieldBorder);
    auto fill = m_look.colour(isOn && isEnabled ? LookColour::Accent : LookColour::Field);
    if (!isEnabled)
        line = m_look.colour(LookColour::DisabledText);
    else if (has(option, QStyle::State_HasFocus))
        line = m_look.colour(LookColour::Focus);
    else if (isOn)
        line = fill;
    if (isEnabled && has(option, QStyle::State_Sunken))
        fill = blended(m_look.colour(LookColour::Pressed), fill);
    else if (isEnabled && has(option, QStyle::State_MouseOver))
        fill = blended(m_look.colour(LookColour::Hover), fill);

    const auto width = side / 18.0 * (isEnabled && has(option, QStyle::State_HasFocus) ? 2.8 : 1.4);
    drawBox(painter, square, fill, line, width, std::min<qreal>(m_look.corners(), side * 0.22));
    if (!isOn)
        return;
    const auto colour = isEnabled ? LookColour::AccentText : LookColour::DisabledText;
    drawStrokes(painter, square, tick(), m_look.colour(colour), side / 8.0);
}

void ControlStyle::drawEntry(const QStyleOptionViewItem &option, QPainter &painter) const
{
    const auto isSelected = has(option, QStyle::State_Selected);
    if (!isSelected && !has(option, QStyle::State_MouseOver))
        return;
    // A row of cells looks like one entry: what is beyond a cell's own edge is cut off.
    const auto beyond = [&option](auto first, auto second) {
        return option.viewItemPosition == first || option.viewItemPosition == second
                   ? 2 * SkinLook::LargestCorners
                   : 0;
    };
    using Item = QStyleOptionViewItem;
    const auto rect = option.rect.adjusted(-beyond(Item::Middle, Item::End), 0,
                                           beyond(Item::Middle, Item::Beginning), 0);
    painter.save();
    painter.setClipRect(option.rect, Qt::IntersectClip);
    painter.setOpacity(has(option, QStyle::State_Enabled) ? 1 : DisabledSelection);
    drawBox(painter, rect, m_look.colour(isSelected ? LookColour::Selection : LookColour::Hover),
            {}, 0, m_look.corners() * 0.75);
    painter.restore();
}

void ControlStyle::drawFocusRing(const QRect &rect, QPainter &painter) const
{
    drawRing(rect, m_look.corners(), painter);
}

/// What a list shows has square corners, which must not cut the ring's.
void ControlStyle::drawFocusFrame(const QRect &rect, QPainter &painter) const
{
    drawRing(rect, std::min(m_look.corners(), 3), painter);
}

void ControlStyle::drawRing(const QRect &rect, qreal radius, QPainter &painter) const
{
    drawBox(painter, rect, Qt::transparent, m_look.colour(LookColour::Focus), 2, radius);
}

void ControlStyle::drawChoice(const QStyleOptionComplex &option, QPainter &painter) const
{
    const auto isEnabled = has(option, QStyle::State_Enabled);
    auto fill = m_look.colour(LookColour::Field);
    if (isEnabled && (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On)))
        fill = blended(m_look.colour(LookColour::Pressed), fill);
    else if (isEnabled && has(option, QStyle::State_MouseOver))
        fill = blended(m_look.colour(LookColour::Hover), fill);
    const auto hasFocus = isEnabled && has(option, QStyle::State_HasFocus);
    // Bold letters go with bold lines.
    const auto weight = m_look.isBold() ? 2.0 : 1.0;
    const auto width = weight * (hasFocus ? 1.6 : 1.0);

    painter.save();
    painter.setOpacity(isEnabled ? 1 : 0.6);
    drawBox(painter, option.rect, fill,
            m_look.colour(hasFocus ? LookColour::Focus : LookColour::FieldBorder), width,
            m_look.corners());
    const QPointF middle(option.rect.right() - ArrowRoom / 2.0, option.rect.center().y() + 1);
    drawStrokes(painter, QRectF(middle, QSizeF(1, 1)), {{-4.5, -2}, {0, 2.5}, {4.5, -2}},
                m_look.colour(LookColour::FieldText), 1.8 * weight);
    painter.restore();
}

void ControlStyle::drawScrollBar(const QStyleOptionComplex &option, const QRect &slider,
                                 QPainter &painter) const
{
    painter.fillRect(option.rect, option.palette.color(QPalette::Base));
    auto colour = m_look.colour(LookColour::FieldBorder);
    if (option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider))
        colour = m_look.colour(LookColour::ListText);
    drawBox(painter, slider.adjusted(2, 2, -2, -2), colour, {}, 0, ScrollBarWidth / 2.0 - 2);
}

QRect ControlStyle::scrollBarPart(const QStyleOptionSlider &option, QStyle::SubControl part)
{
    const auto isLevel = option.orientation == Qt::Horizontal;
    const auto length = isLevel ? option.rect.width() : option.rect.height();
    const auto range = option.maximum - option.minimum;
    const auto share = double(option.pageStep) / std::max(range + option.pageStep, 1);
    const auto size = std::clamp(int(length * share), std::min(LeastSlider, length), length);
    const auto start = QStyle::sliderPositionFromValue(
        option.minimum, option.maximum, option.sliderPosition, length - size, option.upsideDown);
    const auto along = [&](int from, int to) {
        return isLevel
                   ? QRect(option.rect.x() + from, option.rect.y(), to - from, option.rect.height())
                   : QRect(option.rect.x(), option.rect.y() + from, option.rect.width(), to - from);
    };
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return along(start, start + size);
    case QStyle::SC_ScrollBarGroove:
        return along(0, length);
    case QStyle::SC_ScrollBarSubPage:
        return along(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return along(start + size, length);
    default:
        return {};
    }
}

} // namespace Quorlin
