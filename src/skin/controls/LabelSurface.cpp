#include "skin/controls/LabelSurface.h"

#include "skin/controls/InputCodes.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPointer>
#include <QShortcutEvent>

namespace Quorlin {

namespace {

bool isEnter(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

LabelSurface::LabelSurface(QWidget *parent) : QWidget(parent)
{
    setMouseTracking(true);
}

void LabelSurface::Clickable(bool value)
{
    if (m_clickable == value)
        return;
    m_clickable = value;
    setFocusPolicy(value ? Qt::StrongFocus : Qt::NoFocus);
    setAttribute(Qt::WA_Hover, value);
    if (value)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
    hold(false);
    update();
}

void LabelSurface::pressAccessKey()
{
    const QPointer<LabelSurface> alive(this);
    Q_EMIT AccessKeyPress(m_accessKey.unicode());
    if (!alive || !m_clickable || !isEnabled())
        return;
    setFocus(Qt::ShortcutFocusReason);
    if (alive)
        Q_EMIT Click();
}

void LabelSurface::setAccessKey(QChar key)
{
    if (key == m_accessKey)
        return;
    if (m_shortcut != 0)
        releaseShortcut(m_shortcut);
    m_accessKey = key;
    m_shortcut = 0;
    if (!key.isNull())
        m_shortcut = grabShortcut(QKeySequence(Qt::ALT | Qt::Key(key.unicode())));
}

bool LabelSurface::event(QEvent *event)
{
    if (event->type() != QEvent::Shortcut)
        return QWidget::event(event);
    const auto *shortcut = static_cast<QShortcutEvent *>(event);
    if (shortcut->shortcutId() != m_shortcut)
        return QWidget::event(event);
    // Where two labels share a key, it only leads from one to the other.
    if (!shortcut->isAmbiguous())
        pressAccessKey();
    else if (m_clickable)
        setFocus(Qt::ShortcutFocusReason);
    return true;
}

void LabelSurface::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange) {
        m_armed = false;
        hold(false);
    }
    QWidget::changeEvent(event);
}

void LabelSurface::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    Q_EMIT EnterFocus();
}

void LabelSurface::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    m_armed = false;
    hold(false);
    Q_EMIT ExitFocus();
}

void LabelSurface::keyPressEvent(QKeyEvent *event)
{
    const QPointer<LabelSurface> alive(this);
    const auto presses = m_clickable && !event->isAutoRepeat();
    const auto isSpace = event->key() == Qt::Key_Space;
    event->setAccepted(m_clickable && (isSpace || isEnter(*event)));
    if (presses && isSpace) {
        m_armed = true;
        hold(true);
    }
    Q_EMIT KeyDown(InputCodes::key(*event), InputCodes::shift(event->modifiers()));
    if (alive && !event->text().isEmpty())
        Q_EMIT KeyPress(event->text().at(0).unicode());
    if (alive && presses && isEnter(*event))
        Q_EMIT Click();
}

void LabelSurface::keyReleaseEvent(QKeyEvent *event)
{
    const QPointer<LabelSurface> alive(this);
    const auto isSpace = event->key() == Qt::Key_Space;
    event->setAccepted(m_clickable && (isSpace || isEnter(*event)));
    if (event->isAutoRepeat())
        return;
    Q_EMIT KeyUp(InputCodes::key(*event), InputCodes::shift(event->modifiers()));
    if (alive && isSpace && m_held)
        releaseSpace();
}

void LabelSurface::releaseSpace()
{
    m_armed = false;
    hold(false);
    Q_EMIT Click();
}

void LabelSurface::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        m_armed = true;
        hold(m_clickable);
    }
    const auto place = event->position();
    Q_EMIT MouseDown(InputCodes::buttons(event->button()), InputCodes::shift(event->modifiers()),
                     place.x(), place.y());
}

void LabelSurface::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    // Of two quick clicks on a button none is lost.
    m_armed = m_clickable;
    hold(m_clickable);
    Q_EMIT DblClick();
}

void LabelSurface::mouseMoveEvent(QMouseEvent *event)
{
    const auto place = event->position();
    if (event->buttons().testFlag(Qt::LeftButton))
        hold(m_armed && m_clickable && rect().contains(place.toPoint()));
    Q_EMIT MouseMove(InputCodes::buttons(event->buttons()), InputCodes::shift(event->modifiers()),
                     place.x(), place.y());
}

void LabelSurface::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointer<LabelSurface> alive(this);
    const auto place = event->position();
    auto isClick = false;
    if (event->button() == Qt::LeftButton) {
        isClick = m_armed && rect().contains(place.toPoint());
        m_armed = false;
        hold(false);
    }
    Q_EMIT MouseUp(InputCodes::buttons(event->button()), InputCodes::shift(event->modifiers()),
                   place.x(), place.y());
    if (alive && isClick)
        Q_EMIT Click();
}

void LabelSurface::hold(bool down)
{
    if (m_held == down)
        return;
    m_held = down;
    update();
}

} // namespace Quorlin
