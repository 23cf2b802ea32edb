#include "convert/ProcessGroup.h"

#include <QProcess>

#include <csignal>

#include <unistd.h>

namespace Quorlin {

void leadOwnProcessGroup(QProcess &process)
{
    process.setChildProcessModifier([] {
        ::setpgid(0, 0);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
    });
}

} // namespace Quorlin
