#include "ui/LogoButton.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace Quorlin {

LogoButton::LogoButton(QWidget *parent) : QPushButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

void LogoButton::keyPressEvent(QKeyEvent *event)
{
    const auto isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && !event->isAutoRepeat())
        click();
    else if (!isEnter)
        QPushButton::keyPressEvent(event);
}

void LogoButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    icon().paint(&painter, rect());
    if (!hasFocus())
        return;
    QStyleOptionFocusRect ring;
    ring.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
}

} // namespace Quorlin
