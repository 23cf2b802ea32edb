#pragma once

#include "component/supervisor/Limits.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

namespace Quorlin {

/// Watches one piece of work: it must show progress now and then, and end some day.
///
/// Progress is what the worker reports, and that the files in its folder grow.
class Watchdog : public QObject
{
    Q_OBJECT

public:
    explicit Watchdog(QObject *parent = nullptr);

    /// @param folder where the work's files grow, folders inside included; empty when there is
    /// none.
    void start(const Limits &limits, const QString &folder);
    void stop();

    /// The work showed a sign of life.
    void feed();

Q_SIGNALS:
    /// A limit is exceeded; the watch has ended.
    void bit();

private:
    void look();
    [[nodiscard]] qint64 folderSize() const;

    QTimer m_timer;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceProgress;
    Limits m_limits;
    QString m_folder;
    qint64 m_lastSize = 0;
};

} // namespace Quorlin
