#include "winsupport/ThreadTimers.h"

#include <QAbstractEventDispatcher>
#include <QTimerEvent>

namespace Quorlin {

qint32 ThreadTimers::start(qint32 interval, TimerProcedure procedure)
{
    if (!QAbstractEventDispatcher::instance())
        return 0;
    const auto identifier = startTimer(interval, Qt::PreciseTimer);
    if (identifier != 0)
        m_procedures.insert(identifier, procedure);
    return identifier;
}

void ThreadTimers::stop(qint32 identifier)
{
    if (m_procedures.remove(identifier) > 0)
        killTimer(identifier);
}

void ThreadTimers::timerEvent(QTimerEvent *event)
{
    const auto procedure = m_procedures.value(event->timerId());
    if (procedure)
        procedure(event->timerId());
}

} // namespace Quorlin
