#include "winsupport/ChildGroup.h"

#include <QProcess>

#include <csignal>

#include <unistd.h>

namespace Quorlin::ChildGroup {

void lead(QProcess &process)
{
    process.setChildProcessModifier([] {
        ::setpgid(0, 0);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
    });
}

void end(qint64 leader)
{
    // 0 and 1 would mean this program's own group, or everything.
    if (leader > 1)
        ::kill(-pid_t(leader), SIGKILL);
}

} // namespace Quorlin::ChildGroup
