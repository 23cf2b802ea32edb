#include "PaintCounter.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTest>
#include <QWidget>

namespace Quorlin {

PaintCounter::PaintCounter(QWidget &widget)
{
    widget.installEventFilter(this);
    for (auto *child : widget.findChildren<QWidget *>())
        child->installEventFilter(this);
    widget.show();
    if (!QTest::qWaitForWindowExposed(widget.window()))
        qFatal("the window does not appear");
    const auto first = take();
    Q_UNUSED(first)
}

int PaintCounter::take()
{
    // Posted requests to update are handled before those that they cause.
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    return std::exchange(m_count, 0);
}

bool PaintCounter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint)
        ++m_count;
    return QObject::eventFilter(watched, event);
}

} // namespace Quorlin
