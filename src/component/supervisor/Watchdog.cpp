#include "component/supervisor/Watchdog.h"

#include <QDirIterator>

#include <algorithm>
#include <limits>

namespace Quorlin {

namespace {

/// Milliseconds. A program can ask for a gigabyte in that time; the limits that the kernel
/// enforces lie further out.
constexpr int LookEvery = 200;

/// So many files in the folder of one document are no document's any more; counting them would
/// hold up everybody else.
constexpr int MostFiles = 10'000;

/// A worker, its engine and what little a script in its place may need.
constexpr int MostProcesses = 32;

} // namespace

Watchdog::Watchdog(QObject *parent) : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &Watchdog::look);
}

void Watchdog::start(const Limits &limits, const QString &folder, qint64 group)
{
    m_limits = limits;
    if (m_limits.memoryBytes <= 0)
        m_limits.memoryBytes = Limits::usualMemory();
    m_folder = folder;
    m_group = group;
    m_cpuBefore = ProcessGroup::usageOf(group).cpuMilliseconds;
    m_lastSize = 0;
    m_sinceStart.start();
    m_sinceProgress.start();
    m_timer.start(std::clamp(std::min(limits.stallMs, limits.totalMs) / 4, 20, LookEvery));
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
    const auto reason = excess(size);
    if (reason == Reason::None)
        return;
    stop();
    Q_EMIT bit(reason, reason == Reason::NoRoom ? tr("it would need too much room on the disk")
                                                : QString());
}

Reason Watchdog::excess(qint64 diskBytes) const
{
    if (m_sinceProgress.elapsed() >= m_limits.stallMs || m_sinceStart.elapsed() >= m_limits.totalMs)
        return Reason::TookTooLong;
    if (diskBytes > m_limits.diskBytes)
        return Reason::NoRoom;
    const auto usage = ProcessGroup::usageOf(m_group);
    if (usage.memoryBytes > m_limits.memoryBytes)
        return Reason::OutOfMemory;
    if (usage.cpuMilliseconds - m_cpuBefore > m_limits.totalMs)
        return Reason::TookTooLong;
    return usage.processes > MostProcesses ? Reason::EngineFailed : Reason::None;
}

qint64 Watchdog::folderSize() const
{
    qint64 size = 0;
    if (m_folder.isEmpty())
        return size;
    QDirIterator files(
        m_folder, QDir::Files | QDir::Dirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    for (int count = 0; files.hasNext(); ++count) {
        if (count == MostFiles)
            return std::numeric_limits<qint64>::max();
        files.next();
        if (files.fileInfo().isFile())
            size += files.fileInfo().size();
    }
    return size;
}

} // namespace Quorlin
