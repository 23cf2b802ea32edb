#include "ui/SkinStyle.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

namespace Quorlin {

namespace {

constexpr int TextStart = 10;
constexpr int ArrowRoom = SkinStyle::ChoiceFrame - TextStart;
constexpr int ScrollBarWidth = 10;
constexpr int LeastSlider = 24;
/// How much of its colour a selected entry keeps in a list that is disabled.
constexpr qreal DisabledSelection = 0.3;
/// Above and below the text of a list's entry, together.
constexpr int EntryRoom = 10;

/// A line of this width through the middles of the edge's pixels.
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
    const auto share = over.alphaF();
    const auto mix = [share](float a, float b) { return a * share + b * (1 - share); };
    return QColor::fromRgbF(mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()),
                            mix(over.blueF(), under.blueF()));
}

void setDisabled(QPalette &palette, const QColor &text)
{
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, text);
}

} // namespace

SkinStyle::SkinStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

QPalette SkinStyle::paletteFor(const SkinLook &look)
{
    QPalette palette;
    palette.setColor(QPalette::Window, look.colour(LookColour::Menu));
    palette.setColor(QPalette::WindowText, look.colour(LookColour::MenuText));
    palette.setColor(QPalette::Base, look.colour(LookColour::List));
    palette.setColor(QPalette::AlternateBase, look.colour(LookColour::List));
    palette.setColor(QPalette::Text, look.colour(LookColour::ListText));
    palette.setColor(QPalette::Button, look.colour(LookColour::Field));
    palette.setColor(QPalette::ButtonText, look.colour(LookColour::FieldText));
    palette.setColor(QPalette::Highlight, look.colour(LookColour::Selection));
    palette.setColor(QPalette::HighlightedText, look.colour(LookColour::SelectionText));
    palette.setColor(QPalette::ToolTipBase, look.colour(LookColour::Menu));
    palette.setColor(QPalette::ToolTipText, look.colour(LookColour::MenuText));
    setDisabled(palette, look.colour(LookColour::DisabledText));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText,
                     look.colour(LookColour::DisabledText));
    return palette;
}

void SkinStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                              QPainter *painter, const QWidget *widget) const
{
    if (element == PE_IndicatorCheckBox)
        drawCheckBox(*option, *painter);
    else if (element == PE_FrameFocusRect)
        drawFocusRing(option->rect, *painter);
    else if (element == PE_PanelItemViewItem)
        drawEntry(*option, *painter);
    else if (element == PE_Frame)
        drawFrame(*option, *painter);
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void SkinStyle::drawCheckBox(const QStyleOption &option, QPainter &painter) const
{
    const auto isOn = has(option, State_On);
    const auto isEnabled = has(option, State_Enabled);
    const auto side = std::min(option.rect.width(), option.rect.height());
    const QRect square(option.rect.topLeft(), QSize(side, side));
    auto line = m_look.colour(LookColour::FieldBorder);
    auto fill = m_look.colour(isOn && isEnabled ? LookColour::Accent : LookColour::Field);
    if (!isEnabled)
        line = m_look.colour(LookColour::DisabledText);
    else if (has(option, State_HasFocus))
        line = m_look.colour(LookColour::Focus);
    else if (isOn)
        line = fill;
    if (isEnabled && has(option, State_Sunken))
        fill = blended(m_look.colour(LookColour::Pressed), fill);
    else if (isEnabled && has(option, State_MouseOver))
        fill = blended(m_look.colour(LookColour::Hover), fill);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const auto width = side / 18.0 * (isEnabled && has(option, State_HasFocus) ? 2.8 : 1.4);
    painter.setPen(QPen(line, width));
    painter.setBrush(fill);
    const auto radius = std::min<qreal>(m_look.corners(), side * 0.22);
    painter.drawRoundedRect(edgeOf(square, width), radius, radius);
    if (isOn) {
        QPolygonF tick{{0.26, 0.53}, {0.43, 0.69}, {0.75, 0.33}};
        for (auto &point : tick)
            point = QPointF(square.topLeft()) + point * side;
        const auto tickColour = isEnabled ? LookColour::AccentText : LookColour::DisabledText;
        painter.setPen(QPen(m_look.colour(tickColour), side / 8.0, Qt::SolidLine, Qt::RoundCap,
                            Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(tick);
    }
    painter.restore();
}

/// The ground of a list's entry.
void SkinStyle::drawEntry(const QStyleOption &option, QPainter &painter) const
{
    const auto isSelected = has(option, State_Selected);
    if (!isSelected && !has(option, State_MouseOver))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setOpacity(has(option, State_Enabled) ? 1 : DisabledSelection);
    painter.setBrush(m_look.colour(isSelected ? LookColour::Selection : LookColour::Hover));
    painter.drawRoundedRect(option.rect, m_look.corners() * 0.75, m_look.corners() * 0.75);
    painter.restore();
}

/// A list's frame shows the focus; where it has an entry, that entry shows it.
void SkinStyle::drawFrame(const QStyleOption &option, QPainter &painter) const
{
    if (has(option, State_HasFocus))
        drawFocusRing(option.rect, painter);
}

void SkinStyle::drawFocusRing(const QRect &rect, QPainter &painter) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_look.colour(LookColour::Focus), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(edgeOf(rect, 2), m_look.corners(), m_look.corners());
    painter.restore();
}

void SkinStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const
{
    const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(option);
    if (element == CE_CheckBox && button && button->text.isEmpty()) {
        drawCheckBox(*option, *painter);
        return;
    }
    const auto *const choice = qstyleoption_cast<const QStyleOptionComboBox *>(option);
    if (element != CE_ComboBoxLabel || !choice) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    const auto room = subControlRect(CC_ComboBox, choice, SC_ComboBoxEditField, widget);
    const auto colour =
        has(*option, State_Enabled) ? LookColour::FieldText : LookColour::DisabledText;
    painter->setPen(m_look.colour(colour));
    painter->drawText(
        room, Qt::AlignVCenter | Qt::AlignLeft,
        option->fontMetrics.elidedText(choice->currentText, Qt::ElideRight, room.width()));
}

void SkinStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const
{
    if (control == CC_ComboBox)
        drawChoice(*option, *painter);
    else if (control == CC_ScrollBar)
        drawScrollBar(*option, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void SkinStyle::drawChoice(const QStyleOptionComplex &option, QPainter &painter) const
{
    const auto isEnabled = has(option, State_Enabled);
    auto fill = m_look.colour(LookColour::Field);
    if (isEnabled && (has(option, State_Sunken) || has(option, State_On)))
        fill = blended(m_look.colour(LookColour::Pressed), fill);
    else if (isEnabled && has(option, State_MouseOver))
        fill = blended(m_look.colour(LookColour::Hover), fill);
    const auto hasFocus = isEnabled && has(option, State_HasFocus);
    // Bold letters go with bold lines.
    const auto weight = m_look.isBold() ? 2.0 : 1.0;
    const auto width = weight * (hasFocus ? 1.6 : 1.0);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled ? 1 : 0.6);
    painter.setPen(
        QPen(m_look.colour(hasFocus ? LookColour::Focus : LookColour::FieldBorder), width));
    painter.setBrush(fill);
    painter.drawRoundedRect(edgeOf(option.rect, width), m_look.corners(), m_look.corners());

    const QPointF middle(option.rect.right() - ArrowRoom / 2.0, option.rect.center().y() + 1);
    painter.setPen(QPen(m_look.colour(LookColour::FieldText), 1.8 * weight, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(
        QPolygonF{middle + QPointF(-4.5, -2), middle + QPointF(0, 2.5), middle + QPointF(4.5, -2)});
    painter.restore();
}

void SkinStyle::drawScrollBar(const QStyleOptionComplex &option, QPainter &painter,
                              const QWidget *widget) const
{
    painter.fillRect(option.rect, m_look.colour(LookColour::List));
    const auto slider = subControlRect(CC_ScrollBar, &option, SC_ScrollBarSlider, widget);
    auto colour = m_look.colour(LookColour::FieldBorder);
    if (option.activeSubControls.testFlag(SC_ScrollBarSlider))
        colour = m_look.colour(LookColour::ListText);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    const auto thin = QRectF(slider).adjusted(2, 2, -2, -2);
    painter.drawRoundedRect(thin, ScrollBarWidth / 2.0 - 2, ScrollBarWidth / 2.0 - 2);
    painter.restore();
}

QRect SkinStyle::subElementRect(SubElement element, const QStyleOption *option,
                                const QWidget *widget) const
{
    // A check box without a text is its indicator, as large as the skin made it.
    const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(option);
    const auto isIndicatorPart = element == SE_CheckBoxIndicator ||
                                 element == SE_CheckBoxClickRect || element == SE_CheckBoxFocusRect;
    if (isIndicatorPart && button && button->text.isEmpty())
        return option->rect;
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect SkinStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                SubControl part, const QWidget *widget) const
{
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return option->rect.adjusted(TextStart, 0, -ArrowRoom, 0);
    const auto *const slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control == CC_ScrollBar && slider)
        return QStyle::visualRect(option->direction, option->rect, scrollBarPart(*slider, part));
    return QProxyStyle::subControlRect(control, option, part, widget);
}

/// A scroll bar without arrows: the slider has its whole length.
QRect SkinStyle::scrollBarPart(const QStyleOptionSlider &option, SubControl part)
{
    const auto isLevel = option.orientation == Qt::Horizontal;
    const auto length = isLevel ? option.rect.width() : option.rect.height();
    const auto range = option.maximum - option.minimum;
    const auto share = double(option.pageStep) / std::max(range + option.pageStep, 1);
    const auto size = std::clamp(int(length * share), std::min(LeastSlider, length), length);
    const auto start = sliderPositionFromValue(
        option.minimum, option.maximum, option.sliderPosition, length - size, option.upsideDown);
    const auto along = [&](int from, int to) {
        return isLevel
                   ? QRect(option.rect.x() + from, option.rect.y(), to - from, option.rect.height())
                   : QRect(option.rect.x(), option.rect.y() + from, option.rect.width(), to - from);
    };
    switch (part) {
    case SC_ScrollBarSlider:
        return along(start, start + size);
    case SC_ScrollBarGroove:
        return along(0, length);
    case SC_ScrollBarSubPage:
        return along(0, start);
    case SC_ScrollBarAddPage:
        return along(start + size, length);
    default:
        return {};
    }
}

QSize SkinStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                  const QSize &contents, const QWidget *widget) const
{
    auto size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_ItemViewItem)
        size.setHeight(option->fontMetrics.height() + EntryRoom);
    return size;
}

int SkinStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                           const QWidget *widget) const
{
    if (metric == PM_ScrollBarExtent)
        return ScrollBarWidth;
    if (metric == PM_DefaultFrameWidth && qobject_cast<const QAbstractItemView *>(widget))
        return 2;
    if (metric == PM_FocusFrameHMargin)
        return EntryRoom / 2;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int SkinStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                         QStyleHintReturn *data) const
{
    if (hint == SH_ComboBox_Popup)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

} // namespace Quorlin
