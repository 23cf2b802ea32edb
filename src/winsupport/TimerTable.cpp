#include "winsupport/TimerTable.h"

#include "winsupport/MTimer.h"

#include <algorithm>

namespace Quorlin {

TimerTable::TimerTable(SystemTimers &system, TimerProcedure procedure)
    : m_system(&system), m_procedure(procedure)
{
}

bool TimerTable::add(CTimer &timer)
{
    timer.m_systemIdentifier = m_system->start(timer.Interval(), m_procedure);
    if (timer.m_systemIdentifier == 0) {
        timer.Interval(0);
        return false;
    }
    const auto empty = std::find(m_slots.begin(), m_slots.end(), nullptr);
    if (empty == m_slots.end())
        MTimer::raiseError(MTimer::TableFull);
    *empty = &timer;
    m_highWaterMark = std::max(m_highWaterMark, static_cast<qint16>(empty - m_slots.begin() + 1));
    return true;
}

void TimerTable::remove(const CTimer &timer)
{
    const auto number = slotOf(timer.m_systemIdentifier);
    if (number == 0)
        return;
    m_system->stop(timer.m_systemIdentifier);
    m_slots[static_cast<size_t>(number - 1)].clear();
}

void TimerTable::dispatch(qint32 identifier)
{
    // Nothing is looked at after the tick: its handler may have changed every slot.
    if (auto *timer = at(slotOf(identifier)))
        timer->PulseTimer();
}

CTimer *TimerTable::at(qint16 number) const
{
    return number < 1 || number > Slots ? nullptr : m_slots[static_cast<size_t>(number - 1)].data();
}

/// @return 0 when no timer up to the high-water mark has the identifier.
qint16 TimerTable::slotOf(qint32 identifier) const
{
    for (qint16 number = 1; number <= m_highWaterMark; ++number)
        if (const auto *timer = at(number); timer && timer->m_systemIdentifier == identifier)
            return number;
    return 0;
}

} // namespace Quorlin
