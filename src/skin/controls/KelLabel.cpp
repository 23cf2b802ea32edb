#include "skin/controls/KelLabel.h"

#include "skin/controls/ControlsAccessible.h"
#include "skin/controls/LabelFace.h"
#include "skin/controls/StoredProperties.h"
#include "winsupport/DrivePath.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>

namespace Quorlin {

namespace {

constexpr int HoverTint = 20;
constexpr int HeldTint = 48;
constexpr int StoredCount = 14;

QStringList storedNames()
{
    return StoredProperties::names(KelLabel::staticMetaObject, StoredCount);
}

} // namespace

KelLabel::KelLabel(QWidget *parent) : LabelStates(parent)
{
    ControlsAccessible::install();
}

void KelLabel::Caption(const QString &value)
{
    if (m_caption == value)
        return;
    m_caption = value;
    retext();
}

void KelLabel::Font(const QFont &value)
{
    if (value == font() && testAttribute(Qt::WA_SetFont))
        return;
    setFont(value);
}

void KelLabel::UseMnemonic(bool value)
{
    if (m_useMnemonic == value)
        return;
    m_useMnemonic = value;
    retext();
}

void KelLabel::retext()
{
    const LabelText text(m_caption, m_useMnemonic);
    if (text == m_text)
        return;
    const auto isRenamed = text.shown() != m_text.shown();
    m_text = text;
    setAccessKey(m_text.accessKey());
    Refresh();
    if (isRenamed) {
        QAccessibleEvent change(this, QAccessible::NameChanged);
        announce(change);
    }
}

void KelLabel::announce(QAccessibleEvent &event)
{
    QAccessible::updateAccessibility(&event);
}

void KelLabel::Refresh()
{
    fitToText();
    update();
}

void KelLabel::fitToText()
{
    updateGeometry();
    if (m_autoSize)
        resize(face().fittingSize());
}

void KelLabel::readProperties(const QVariantMap &bag)
{
    StoredProperties::read(*this, storedNames(), bag);
}

QVariantMap KelLabel::writeProperties() const
{
    return StoredProperties::write(*this, storedNames());
}

QSize KelLabel::sizeHint() const
{
    return face().fittingSize();
}

LabelFace KelLabel::face() const
{
    LabelFace face;
    face.size = size();
    face.text = m_text;
    face.font = font();
    face.wrap = m_wordWrap;
    face.alignment = m_alignment;
    face.verticalAlignment = m_verticalAlignment;
    if (m_borderStyle == 1)
        face.border = m_appearance == 0 ? LabelFace::Border::Flat : LabelFace::Border::Sunken;
    face.borderColor = ColorValue::resolved(m_borderColor);
    face.textColor = currentTextColor(m_textColor);
    if (m_backStyle == 1)
        face.backColor = ColorValue::resolved(m_backColor);
    if (Clickable() && isEnabled())
        face.tint = isHeld() ? HeldTint : underMouse() ? HoverTint : 0;
    face.veil = currentVeil();
    face.hasFocusRing = Clickable() && hasFocus();
    face.focusColor = currentFocusColor(m_textColor);
    face.cornerRadius = CornerRadius();
    return face;
}

bool KelLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty())
        return showToolTip(*static_cast<QHelpEvent *>(event));
    return LabelStates::event(event);
}

/// Tells the whole of a text that has no room.
bool KelLabel::showToolTip(const QHelpEvent &event)
{
    if (!face().textBlock().isElided()) {
        QToolTip::hideText();
        return false;
    }
    QToolTip::showText(event.globalPos(),
                       Qt::convertFromPlainText(shownText(), Qt::WhiteSpaceNormal), this);
    return true;
}

void KelLabel::changeEvent(QEvent *event)
{
    LabelStates::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitToText();
}

void KelLabel::paintEvent(QPaintEvent *)
{
    const auto now = face();
    QPainter painter(this);
    now.draw(painter);
    painter.end();
    if (m_backStyle == 1)
        m_saver.save(now, drivePath(QStringLiteral("c:\\temp\\test1.bmp")), devicePixelRatioF());
}

void KelLabel::resizeEvent(QResizeEvent *event)
{
    LabelStates::resizeEvent(event);
    if (m_autoSize)
        resize(face().fittingSize());
}

} // namespace Quorlin
