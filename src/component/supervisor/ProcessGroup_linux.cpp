#include "component/supervisor/ProcessGroup.h"

#include <QProcess>

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

namespace Quorlin::ProcessGroup {

void lead(QProcess &process)
{
    const auto parent = ::getpid();
    // Runs in the child between fork and exec: only async-signal-safe calls.
    process.setChildProcessModifier([parent] {
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        ::signal(SIGPIPE, SIG_DFL);
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(1);
    });
}

void kill(qint64 leader)
{
    if (leader > 1)
        ::kill(-static_cast<pid_t>(leader), SIGKILL);
}

} // namespace Quorlin::ProcessGroup
