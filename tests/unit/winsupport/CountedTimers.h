#pragma once

#include "winsupport/CTimer.h"
#include "winsupport/MTimer.h"
#include "winsupport/SystemTimers.h"
#include "winsupport/TimerTable.h"

#include <QList>
#include <QMap>

#include <memory>
#include <vector>

namespace Quorlin {

/// Stands in for the system's timers while it lives: counts them and ticks on request.
class CountedTimers : public SystemTimers
{
public:
    CountedTimers() { MTimer::useSystemTimers(this); }
    ~CountedTimers() override { MTimer::useSystemTimers(nullptr); }

    [[nodiscard]] qint32 start(qint32 interval, TimerProcedure procedure) override
    {
        if (refuse)
            return 0;
        started.append(interval);
        running.insert(++m_last, procedure);
        return m_last;
    }

    void stop(qint32 identifier) override
    {
        stopped.append(identifier);
        running.remove(identifier);
    }

    void tick(qint32 identifier) const
    {
        if (const auto procedure = running.value(identifier))
            procedure(identifier);
    }

    bool refuse = false;
    QList<qint32> started; ///< intervals
    QList<qint32> stopped; ///< identifiers
    QMap<qint32, TimerProcedure> running;

private:
    qint32 m_last = 0;
};

/// As many timers as the table takes.
inline constexpr int Limit = 100;
/// An interval for timers that nobody waits for, in milliseconds.
inline constexpr qint32 Often = 1000;

using Timers = std::vector<std::unique_ptr<CTimer>>;

inline Timers runningTimers(int count)
{
    Timers timers;
    for (int i = 0; i < count; ++i) {
        timers.push_back(std::make_unique<CTimer>());
        timers.back()->Interval(Often);
    }
    return timers;
}

/// The place of a timer in the table, from 1; 0 when it has none.
inline qint16 slotOf(const CTimer &timer)
{
    for (qint16 number = 1; number <= TimerTable::Slots; ++number)
        if (MTimer::table().at(number) == &timer)
            return number;
    return 0;
}

} // namespace Quorlin
