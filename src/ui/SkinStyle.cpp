#include "ui/SkinStyle.h"

#include "ui/Compositing.h"
#include "ui/StyleIcons.h"
#include "ui/StyleParts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTreeView>

#include <algorithm>

namespace Quorlin {

using StyleParts::has;

namespace {

/// Above and below the text of a list's entry, together.
constexpr int EntryRoom = 10;
constexpr int TipMargin = 7;
constexpr int FieldStart = 5;
constexpr int LeastIcon = 16;

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

void SkinStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (!qobject_cast<QMenu *>(widget))
        return;
    widget->setAttribute(Qt::WA_TranslucentBackground, Compositing::isActive());
    widget->setWindowFlag(Qt::FramelessWindowHint);
    widget->setWindowFlag(Qt::NoDropShadowWindowHint);
}

void SkinStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                              QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_IndicatorCheckBox:
        m_controls.drawCheckBox(*option, *painter);
        return;
    case PE_FrameFocusRect:
        drawFocusRing(*option, *painter, widget);
        return;
    case PE_Frame:
        drawFrame(*option, *painter, widget);
        return;
    case PE_PanelMenu:
        m_menus.drawPanel(*option, *painter);
        return;
    case PE_PanelItemViewRow: // the cells are drawn whole
    case PE_FrameMenu:        // so is the panel
        return;
    case PE_PanelButtonTool:
        m_dialogs.drawToolButton(*option, *painter);
        return;
    case PE_PanelTipLabel:
        m_dialogs.drawTip(*option, *painter);
        return;
    case PE_IndicatorDockWidgetResizeHandle:
        m_dialogs.drawSplitter(*option, *painter);
        return;
    default:
        if (!drawTypedPrimitive(element, *option, *painter))
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

/// What must know more than every option tells.
bool SkinStyle::drawTypedPrimitive(PrimitiveElement element, const QStyleOption &option,
                                   QPainter &painter) const
{
    if (element == PE_PanelButtonCommand) {
        const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(&option);
        if (button)
            m_dialogs.drawButton(*button, painter);
        return button;
    }
    if (element == PE_PanelItemViewItem) {
        const auto *const entry = qstyleoption_cast<const QStyleOptionViewItem *>(&option);
        if (entry)
            m_controls.drawEntry(*entry, painter);
        return entry;
    }
    // Without a frame it is a part of another control.
    const auto *const frame = qstyleoption_cast<const QStyleOptionFrame *>(&option);
    const auto isField = element == PE_PanelLineEdit && frame && frame->lineWidth > 0;
    if (isField)
        m_dialogs.drawField(option, painter);
    return isField;
}

/// A list's frame shows the focus; where it has an entry, that entry shows it.
void SkinStyle::drawFrame(const QStyleOption &option, QPainter &painter,
                          const QWidget *widget) const
{
    if (widget && widget->inherits("QComboBoxPrivateContainer"))
        m_dialogs.drawChoicePanel(option, painter);
    else if (qobject_cast<const QAbstractItemView *>(widget) &&
             qobject_cast<const QDialog *>(widget->window()))
        m_dialogs.drawListFrame(option, painter);
    else if (has(option, State_HasFocus))
        m_controls.drawFocusFrame(option.rect, painter);
}

/// A dialog's buttons show the focus themselves, and a row of cells must not be torn into cells.
void SkinStyle::drawFocusRing(const QStyleOption &option, QPainter &painter,
                              const QWidget *widget) const
{
    const auto isButton = qobject_cast<const QAbstractButton *>(widget) &&
                          qobject_cast<const QDialog *>(widget->window());
    if (!isButton && !qobject_cast<const QTreeView *>(widget))
        m_controls.drawFocusRing(option.rect, painter);
}

void SkinStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                            const QWidget *widget) const
{
    if (element == CE_Splitter)
        m_dialogs.drawSplitter(*option, *painter);
    else if (element != CE_MenuEmptyArea && !drawTypedControl(element, *option, *painter, widget))
        QProxyStyle::drawControl(element, option, painter, widget);
}

bool SkinStyle::drawTypedControl(ControlElement element, const QStyleOption &option,
                                 QPainter &painter, const QWidget *widget) const
{
    if (const auto *const entry = qstyleoption_cast<const QStyleOptionMenuItem *>(&option)) {
        if (element == CE_MenuItem)
            m_menus.drawItem(*entry, painter, *this);
        return element == CE_MenuItem;
    }
    if (const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(&option)) {
        if (element == CE_PushButtonLabel)
            drawButtonText(*button, painter, widget);
        else if (element == CE_CheckBox && button->text.isEmpty())
            m_controls.drawCheckBox(option, painter);
        else
            return false;
        return true;
    }
    if (const auto *const choice = qstyleoption_cast<const QStyleOptionComboBox *>(&option)) {
        if (element == CE_ComboBoxLabel)
            drawChoiceText(*choice, painter, widget);
        return element == CE_ComboBoxLabel;
    }
    const auto *const header = qstyleoption_cast<const QStyleOptionHeader *>(&option);
    if (element == CE_HeaderSection && header)
        m_dialogs.drawHeader(*header, painter);
    return element == CE_HeaderSection && header;
}

void SkinStyle::drawButtonText(const QStyleOptionButton &option, QPainter &painter,
                               const QWidget *widget) const
{
    auto button = option;
    button.palette.setColor(QPalette::ButtonText, m_dialogs.buttonText(option));
    QProxyStyle::drawControl(CE_PushButtonLabel, &button, &painter, widget);
}

void SkinStyle::drawChoiceText(const QStyleOptionComboBox &option, QPainter &painter,
                               const QWidget *widget) const
{
    auto room = subControlRect(CC_ComboBox, &option, SC_ComboBoxEditField, widget);
    if (!option.currentIcon.isNull()) {
        const auto mode = has(option, State_Enabled) ? QIcon::Normal : QIcon::Disabled;
        const QRect icon(room.topLeft(), QSize(option.iconSize.width(), room.height()));
        option.currentIcon.paint(&painter, icon, Qt::AlignCenter, mode);
        room.setLeft(icon.right() + FieldStart);
    }
    const auto colour =
        has(option, State_Enabled) ? LookColour::FieldText : LookColour::DisabledText;
    painter.setPen(m_look.colour(colour));
    painter.drawText(
        room, Qt::AlignVCenter | Qt::AlignLeft,
        option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, room.width()));
}

void SkinStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                   QPainter *painter, const QWidget *widget) const
{
    if (control == CC_ComboBox)
        m_controls.drawChoice(*option, *painter);
    else if (control == CC_ScrollBar)
        m_controls.drawScrollBar(
            *option, subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget), *painter);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
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
        return option->rect.adjusted(ControlStyle::TextStart, 0,
                                     ControlStyle::TextStart - ControlStyle::ChoiceFrame, 0);
    const auto *const slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control == CC_ScrollBar && slider)
        return QStyle::visualRect(option->direction, option->rect,
                                  ControlStyle::scrollBarPart(*slider, part));
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize SkinStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                  const QSize &contents, const QWidget *widget) const
{
    if (const auto *const entry = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
        type == CT_MenuItem && entry)
        return m_menus.itemSize(*entry, contents);
    if (type == CT_PushButton)
        return DialogStyle::buttonSize(*option, contents);
    if (type == CT_LineEdit)
        return DialogStyle::fieldSize(*option, contents);
    auto size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_ItemViewItem || type == CT_HeaderSection)
        size.setHeight(option->fontMetrics.height() + EntryRoom);
    else if (type == CT_ComboBox)
        size = DialogStyle::fieldSize(
            *option, QSize(contents.width() + ControlStyle::ChoiceFrame, contents.height()));
    return size;
}

int SkinStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                           const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return ControlStyle::ScrollBarWidth;
    case PM_FocusFrameHMargin:
        return EntryRoom / 2;
    case PM_MenuPanelWidth:
    case PM_SubMenuOverlap:
        return 0;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return MenuStyle::Margin;
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
        return std::max(LeastIcon, m_look.fontSize() + 3);
    case PM_ToolTipLabelFrameWidth:
        return TipMargin;
    case PM_DefaultFrameWidth:
        return qobject_cast<const QAbstractItemView *>(widget)
                   ? 2
                   : QProxyStyle::pixelMetric(metric, option, widget);
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int SkinStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                         QStyleHintReturn *data) const
{
    if (hint == SH_ComboBox_Popup || hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    auto *const mask = qstyleoption_cast<QStyleHintReturnMask *>(data);
    if (hint == SH_Menu_Mask && mask && option && !Compositing::isActive()) {
        mask->region = m_menus.outline(option->rect);
        return 1;
    }
    if (hint == SH_ToolTip_Mask)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QIcon SkinStyle::standardIcon(StandardPixmap which, const QStyleOption *option,
                              const QWidget *widget) const
{
    const auto icon = StyleIcons::icon(which, m_look);
    return icon.isNull() ? QProxyStyle::standardIcon(which, option, widget) : icon;
}

} // namespace Quorlin
