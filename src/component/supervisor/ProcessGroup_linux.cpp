#include "component/supervisor/ProcessGroup.h"

#include "component/confinement/ChildSetUp.h"

#include <QByteArray>
#include <QProcess>

#include <array>
#include <csignal>
#include <cstdlib>
#include <optional>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace Quorlin::ProcessGroup {

namespace {

QByteArray content(const QByteArray &path)
{
    std::array<char, 4096> bytes{};
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return {};
    const auto count = ::read(file, bytes.data(), bytes.size());
    ::close(file);
    return {bytes.data(), count > 0 ? count : 0};
}

/// The fields of /proc/PID/stat behind the name, which may hold anything; see proc(5).
QList<QByteArray> statusFields(const QByteArray &folder)
{
    const auto line = content(folder + "/stat");
    return line.sliced(line.lastIndexOf(')') + 1).simplified().split(' ');
}

void add(const QByteArray &folder, qint64 group, Usage &usage)
{
    constexpr int Group = 2;
    constexpr int FirstTime = 11; // own time in user and system, then that of reaped children
    constexpr int LastTime = 14;
    static const auto ticks = ::sysconf(_SC_CLK_TCK);
    const auto fields = statusFields(folder);
    if (fields.size() <= LastTime || fields[Group].toLongLong() != group)
        return;
    ++usage.processes;
    for (int time = FirstTime; time <= LastTime; ++time)
        usage.cpuMilliseconds += fields[time].toLongLong() * 1000 / ticks;
    for (const auto &line : content(folder + "/status").split('\n'))
        if (line.startsWith("RssAnon:") || line.startsWith("RssShmem:"))
            usage.memoryBytes += line.simplified().split(' ').value(1).toLongLong() * 1024;
}

} // namespace

void lead(QProcess &process, const ResourceLimits &limits,
          const std::shared_ptr<const Confinement> &confinement)
{
    const auto parent = ChildSetUp::thisProcess();
    // Runs in the child between fork and exec: only async-signal-safe calls.
    process.setChildProcessModifier([parent, limits, confinement] {
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        ::signal(SIGPIPE, SIG_DFL);
        // A file that would become too large is an error of writing, not the end of a program.
        ::signal(SIGXFSZ, SIG_IGN);
        ::setpgid(0, 0);
        ChildSetUp::begin(parent);
        limits.apply();
        if (confinement && !confinement->enter())
            Confinement::abandon();
    });
}

void kill(qint64 leader)
{
    if (leader > 1)
        ::kill(-static_cast<pid_t>(leader), SIGKILL);
}

Usage usageOf(qint64 leader)
{
    Usage usage;
    DIR *const processes = leader > 1 ? ::opendir("/proc") : nullptr;
    if (processes == nullptr)
        return usage;
    while (const auto *const entry = ::readdir(processes))
        if (entry->d_name[0] >= '1' && entry->d_name[0] <= '9')
            add(QByteArray("/proc/") + entry->d_name, leader, usage);
    ::closedir(processes);
    return usage;
}

} // namespace Quorlin::ProcessGroup
