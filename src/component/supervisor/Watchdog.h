#pragma once

#include "component/protocol/Reason.h"
#include "component/supervisor/Limits.h"
#include "component/supervisor/ProcessGroup.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

namespace Quorlin {

/// Watches one piece of work: it must show progress now and then, end some day, and stay within
/// its share of the machine.
///
/// Progress is what the worker reports, and that the files in its folder grow.
class Watchdog : public QObject
{
    Q_OBJECT

public:
    explicit Watchdog(QObject *parent = nullptr);

    /// @param folder where the work's files grow, folders inside included; empty when there is
    /// none. @param group leader of the processes that work; 0 while there are none.
    void start(const Limits &limits, const QString &folder, qint64 group);
    void stop();

    /// The work showed a sign of life.
    void feed();

Q_SIGNALS:
    /// A limit is exceeded; the watch has ended. @param text empty, or more than the reason says.
    void bit(Quorlin::Reason reason, const QString &text);

private:
    void look();
    [[nodiscard]] Reason excess(qint64 diskBytes) const;
    /// In bytes; more than any limit when there are too many files to count.
    [[nodiscard]] qint64 folderSize() const;

    QTimer m_timer;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceProgress;
    Limits m_limits;
    QString m_folder;
    qint64 m_group = 0;
    qint64 m_cpuBefore = 0; ///< milliseconds
    qint64 m_lastSize = 0;
};

} // namespace Quorlin
