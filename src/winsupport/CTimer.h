#pragma once

#include <QObject>

namespace Quorlin {

/// A timer without a window that ticks every `Interval` milliseconds. It belongs to the thread
/// that made it, the one of the windows: ticks arrive only while that thread handles events.
class CTimer : public QObject
{
    Q_OBJECT

public:
    explicit CTimer(QObject *parent = nullptr);
    /// Stops the timer.
    ~CTimer() override;

    /// Milliseconds between two ticks; 0 means stopped.
    [[nodiscard]] qint32 Interval() const { return m_interval; }

    /// Starts, changes or, below 1, stops the timer. The value that it has already does not
    /// start it anew.
    /// @throws NumberedError 0x80043554 when the system has no timer: it is stopped then.
    /// 0x80043553 when the table of timers is full: it keeps the interval but never ticks.
    void Interval(const qint32 &value);

    /// Raises `ThatTime`. A handler may stop or delete the timer.
    void PulseTimer();

    /// What the system called the timer when it was last started.
    [[nodiscard]] qint32 systemIdentifier() const { return m_systemIdentifier; }

Q_SIGNALS:
    void ThatTime();

private:
    friend class TimerTable;

    qint32 m_interval = 0;
    qint32 m_systemIdentifier = 0;
};

} // namespace Quorlin
