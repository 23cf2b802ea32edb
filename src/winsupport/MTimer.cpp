#include "winsupport/MTimer.h"

#include "winsupport/NumberedError.h"
#include "winsupport/QtTimers.h"
#include "winsupport/TimerTable.h"

namespace Quorlin {

namespace {

/// Codes from here on belong to an object.
constexpr quint32 FirstOwnCode = 1001;

QtTimers &eventLoopTimers()
{
    static QtTimers timers;
    return timers;
}

/// The text for the full table is wrong on purpose: it has always named another limit.
QString textOf(quint32 code)
{
    if (code == MTimer::TableFull)
        return QStringLiteral("No more than 10 timers allowed per class");
    if (code == MTimer::NoSystemTimer)
        return QStringLiteral("Can't create system timer");
    return {};
}

} // namespace

TimerTable &MTimer::table()
{
    static TimerTable table(eventLoopTimers(), &MTimer::TimerProc);
    return table;
}

bool MTimer::registerTimer(CTimer &timer)
{
    return table().add(timer);
}

void MTimer::unregisterTimer(const CTimer &timer)
{
    table().remove(timer);
}

void MTimer::TimerProc(qint32 identifier)
{
    table().dispatch(identifier);
}

void MTimer::raiseError(quint32 code)
{
    const auto number = code < FirstOwnCode ? code : NumberedError::ObjectBase + code;
    throw NumberedError(number, QStringLiteral("WindowProc"), textOf(code));
}

void MTimer::useSystemTimers(SystemTimers *timers)
{
    table().setSystem(timers ? *timers : eventLoopTimers());
}

} // namespace Quorlin
