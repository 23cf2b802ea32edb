#include "component/supervisor/Watchdog.h"

#include <QDirIterator>

#include <algorithm>

namespace Quorlin {

Watchdog::Watchdog(QObject *parent) : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &Watchdog::look);
}

void Watchdog::start(const Limits &limits, const QString &folder)
{
    m_limits = limits;
    m_folder = folder;
    m_lastSize = 0;
    m_sinceStart.start();
    m_sinceProgress.start();
    m_timer.start(std::clamp(std::min(limits.stallMs, limits.totalMs) / 4, 20, 1000));
}

void Watchdog::stop()
{
    m_timer.stop();
}

void Watchdog::feed()
{
    m_sinceProgress.start();
}

void Watchdog::look()
{
    const auto size = folderSize();
    if (size != std::exchange(m_lastSize, size))
        feed();
    if (m_sinceProgress.elapsed() < m_limits.stallMs && m_sinceStart.elapsed() < m_limits.totalMs)
        return;
    stop();
    Q_EMIT bit();
}

qint64 Watchdog::folderSize() const
{
    qint64 size = 0;
    if (m_folder.isEmpty())
        return size;
    QDirIterator files(m_folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        size += files.fileInfo().size();
    }
    return size;
}

} // namespace Quorlin
