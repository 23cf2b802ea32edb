#pragma once

#include "winsupport/SystemTimers.h"
#include "winsupport/ThreadTimers.h"

#include <QThreadStorage>

namespace Quorlin {

/// System timers on the event loop of the calling thread. A timer that nobody stops ends with
/// its thread, that of the main thread with the application object.
class QtTimers : public SystemTimers
{
public:
    [[nodiscard]] qint32 start(qint32 interval, TimerProcedure procedure) override;
    void stop(qint32 identifier) override;

    /// How many timers of this thread are alive.
    [[nodiscard]] int running();

private:
    QThreadStorage<ThreadTimers *> m_timers;
};

} // namespace Quorlin
