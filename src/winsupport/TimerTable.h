#pragma once

#include "winsupport/CTimer.h"
#include "winsupport/SystemTimers.h"

#include <QPointer>

#include <array>

namespace Quorlin {

/// The running timers of the process, in slots numbered from 1. Not locked: all timers belong to
/// one thread.
class TimerTable
{
public:
    static constexpr qint16 Slots = 100;

    /// @param procedure what the system calls on every tick of every timer.
    TimerTable(SystemTimers &system, TimerProcedure procedure);

    /// Starts a system timer for the object and gives it the first empty slot.
    /// @return false when the system has no timer; the object's interval is 0 then.
    /// @throws NumberedError when no slot is empty. The system timer then runs without one.
    [[nodiscard]] bool add(CTimer &timer);

    /// Ends the system timer of an object and empties its slot. One without a slot keeps its
    /// system timer.
    void remove(const CTimer &timer);

    /// Raises the tick of the timer with this identifier; without a slot it is dropped. The
    /// handler may start, stop and delete timers, its own too.
    void dispatch(qint32 identifier);

    /// The highest slot that was ever filled; every search ends there. Never goes down.
    [[nodiscard]] qint16 highWaterMark() const { return m_highWaterMark; }

    /// The timer in a slot, from 1; null in an empty one.
    [[nodiscard]] CTimer *at(qint16 number) const;

    /// Takes other system timers from now on; those that run stay with the former ones.
    void setSystem(SystemTimers &system) { m_system = &system; }

private:
    [[nodiscard]] qint16 slotOf(qint32 identifier) const;

    SystemTimers *m_system;
    TimerProcedure m_procedure;
    std::array<QPointer<CTimer>, Slots> m_slots;
    qint16 m_highWaterMark = 0;
};

} // namespace Quorlin
