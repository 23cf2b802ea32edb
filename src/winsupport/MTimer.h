#pragma once

#include "winsupport/SystemTimers.h"

namespace Quorlin {

class CTimer;
class TimerTable;

/// The timers that run in this process, and the one procedure that the system calls for them.
namespace MTimer {

/// Codes of errors.
constexpr quint32 TableFull = 13651;
constexpr quint32 NoSystemTimer = 13652;

/// See TimerTable::add() and TimerTable::remove().
[[nodiscard]] bool registerTimer(CTimer &timer);
void unregisterTimer(const CTimer &timer);

/// What the system calls on every tick.
void TimerProc(qint32 identifier);

/// Throws a NumberedError: a code below 1001 as it is, any other in the range of objects.
[[noreturn]] void raiseError(quint32 code);

/// The table of the process.
[[nodiscard]] TimerTable &table();

/// Lets a test stand in for the system; null goes back to the event loop's timers. Not owned.
/// To be called while no timer runs.
void useSystemTimers(SystemTimers *timers);

} // namespace MTimer

} // namespace Quorlin
