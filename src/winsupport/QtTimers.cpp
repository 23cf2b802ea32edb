#include "winsupport/QtTimers.h"

namespace Quorlin {

qint32 QtTimers::start(qint32 interval, TimerProcedure procedure)
{
    if (!m_timers.hasLocalData())
        m_timers.setLocalData(new ThreadTimers);
    return m_timers.localData()->start(interval, procedure);
}

void QtTimers::stop(qint32 identifier)
{
    if (m_timers.hasLocalData())
        m_timers.localData()->stop(identifier);
}

int QtTimers::running()
{
    return m_timers.hasLocalData() ? m_timers.localData()->running() : 0;
}

} // namespace Quorlin
