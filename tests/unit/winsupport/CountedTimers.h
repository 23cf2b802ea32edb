#pragma once

#include "winsupport/MTimer.h"
#include "winsupport/SystemTimers.h"

#include <QList>
#include <QMap>

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

} // namespace Quorlin
