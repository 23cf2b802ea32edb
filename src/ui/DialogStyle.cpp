#include "ui/DialogStyle.h"

#include "ui/StyleParts.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace Quorlin {

using namespace StyleParts;

namespace {

constexpr qreal FocusWidth = 2;
constexpr int ButtonRoom = 14;
constexpr int LeastButton = 92;
constexpr int ButtonSides = 32;
constexpr int FieldRoom = 12;
constexpr qreal DisabledShare = 0.45;

bool isDefault(const QStyleOptionButton &option)
{
    return option.features.testFlag(QStyleOptionButton::DefaultButton);
}

} // namespace

/// The ground under the mouse and under a pressed button.
QColor DialogStyle::touched(const QStyleOption &option, const QColor &ground) const
{
    if (!has(option, QStyle::State_Enabled))
        return ground;
    if (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On))
        return blended(m_look.colour(LookColour::Pressed), ground);
    return has(option, QStyle::State_MouseOver) ? blended(m_look.colour(LookColour::Hover), ground)
                                                : ground;
}

void DialogStyle::drawButton(const QStyleOptionButton &option, QPainter &painter) const
{
    const auto isEnabled = has(option, QStyle::State_Enabled);
    const auto isAccent = isDefault(option) && isEnabled;
    const auto ground = m_look.colour(isAccent ? LookColour::Accent : LookColour::Field);
    const auto around = m_look.colour(LookColour::Menu);
    const auto edge = isAccent ? ground : m_look.colour(LookColour::FieldBorder);
    const auto radius = m_look.corners() * 0.75;
    // On the accent, the tints of touch would go under: its text's colour stands for them.
    auto fill = touched(option, ground);
    if (isAccent && fill != ground)
        fill = blended(m_look.colour(LookColour::AccentText), ground,
                       has(option, QStyle::State_Sunken) ? 0.22 : 0.12);
    if (!isEnabled || !has(option, QStyle::State_HasFocus)) {
        drawBox(painter, option.rect, isEnabled ? fill : around,
                isEnabled ? edge : blended(edge, around, DisabledShare), weight(), radius);
        return;
    }
    drawBox(painter, option.rect, around, m_look.colour(LookColour::Focus), FocusWidth, radius);
    drawBox(painter, option.rect.adjusted(3, 3, -3, -3), fill, fill, 1,
            std::max<qreal>(radius - 3, 0));
}

QColor DialogStyle::buttonText(const QStyleOptionButton &option) const
{
    if (!has(option, QStyle::State_Enabled))
        return m_look.colour(LookColour::DisabledText);
    return m_look.colour(isDefault(option) ? LookColour::AccentText : LookColour::FieldText);
}

void DialogStyle::drawToolButton(const QStyleOption &option, QPainter &painter) const
{
    const auto around = m_look.colour(LookColour::Menu);
    const auto fill = touched(option, around);
    const auto hasFocus = has(option, QStyle::State_HasFocus);
    if (fill != around || hasFocus)
        drawBox(painter, option.rect, fill, m_look.colour(LookColour::Focus),
                hasFocus ? FocusWidth : 0, m_look.corners() * 0.6);
}

void DialogStyle::drawField(const QStyleOption &option, QPainter &painter) const
{
    const auto isEnabled = has(option, QStyle::State_Enabled);
    const auto hasFocus = isEnabled && has(option, QStyle::State_HasFocus);
    auto edge = m_look.colour(hasFocus ? LookColour::Focus : LookColour::FieldBorder);
    if (!isEnabled)
        edge = blended(edge, m_look.colour(LookColour::Menu), DisabledShare);
    drawBox(painter, option.rect, m_look.colour(LookColour::Field), edge,
            hasFocus ? FocusWidth : weight(), m_look.corners() * 0.75);
}

void DialogStyle::drawListFrame(const QStyleOption &option, QPainter &painter) const
{
    const auto hasFocus = has(option, QStyle::State_HasFocus);
    drawBox(painter, option.rect, m_look.colour(LookColour::List),
            hasFocus ? m_look.colour(LookColour::Focus) : lineColour(m_look),
            hasFocus ? FocusWidth : weight(), std::min(m_look.corners(), 4));
}

void DialogStyle::drawHeader(const QStyleOptionHeader &option, QPainter &painter) const
{
    const auto &rect = option.rect;
    const auto list = m_look.colour(LookColour::List);
    painter.fillRect(rect, touched(option, list));
    const auto width = int(weight());
    painter.fillRect(rect.left(), rect.bottom() - width + 1, rect.width(), width,
                     lineColour(m_look));
    if (option.position != QStyleOptionHeader::End &&
        option.position != QStyleOptionHeader::OnlyOneSection)
        painter.fillRect(rect.right(), rect.top() + 5, 1, rect.height() - 10, lineColour(m_look));
}

void DialogStyle::drawTip(const QStyleOption &option, QPainter &painter) const
{
    painter.fillRect(option.rect, m_look.colour(LookColour::Menu));
    drawBox(painter, option.rect, m_look.colour(LookColour::Menu), lineColour(m_look), weight(), 0);
}

void DialogStyle::drawSplitter(const QStyleOption &option, QPainter &painter) const
{
    const auto middle = QRectF(option.rect).center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(lineColour(m_look));
    const auto isLevel = has(option, QStyle::State_Horizontal);
    for (const auto offset : {-6, 0, 6})
        painter.drawEllipse(middle + (isLevel ? QPointF(0, offset) : QPointF(offset, 0)), 1.2, 1.2);
    painter.restore();
}

void DialogStyle::drawChoicePanel(const QStyleOption &option, QPainter &painter) const
{
    drawBox(painter, option.rect, m_look.colour(LookColour::List), lineColour(m_look), weight(), 0);
}

QSize DialogStyle::buttonSize(const QStyleOption &option, const QSize &contents)
{
    return {std::max(contents.width() + ButtonSides, LeastButton),
            option.fontMetrics.height() + ButtonRoom};
}

QSize DialogStyle::fieldSize(const QStyleOption &option, const QSize &contents)
{
    return {contents.width() + FieldRoom, option.fontMetrics.height() + FieldRoom};
}

} // namespace Quorlin
