#pragma once

#include "winsupport/SystemTimers.h"

#include <QHash>
#include <QObject>

namespace Quorlin {

/// The timers of one thread; they end with the object.
class ThreadTimers : public QObject
{
    Q_OBJECT

public:
    /// @return the identifier; 0 when this thread has no event loop.
    [[nodiscard]] qint32 start(qint32 interval, TimerProcedure procedure);
    void stop(qint32 identifier);
    [[nodiscard]] int running() const { return static_cast<int>(m_procedures.size()); }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QHash<qint32, TimerProcedure> m_procedures;
};

} // namespace Quorlin
