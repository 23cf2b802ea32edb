#pragma once

#include <QtGlobal>

namespace Quorlin {

/// Called on every tick of a system timer with the timer's identifier.
using TimerProcedure = void (*)(qint32 identifier);

/// The timers of the system: windowless, repeating, told apart by an identifier. Ticks arrive on
/// the thread that started the timer, while that thread handles events.
class SystemTimers
{
public:
    virtual ~SystemTimers() = default;

    /// Starts a timer. @param interval milliseconds, at least 1.
    /// @return an identifier that no other running timer has; 0 when there is no timer to be had.
    [[nodiscard]] virtual qint32 start(qint32 interval, TimerProcedure procedure) = 0;

    /// Ends a timer of this thread. An identifier that is not known changes nothing.
    virtual void stop(qint32 identifier) = 0;
};

} // namespace Quorlin
