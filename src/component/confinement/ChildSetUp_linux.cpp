#include "component/confinement/ChildSetUp.h"

#include <csignal>

#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Quorlin::ChildSetUp {

qint64 thisProcess()
{
    return ::getpid();
}

void begin(qint64 parent) noexcept
{
    constexpr unsigned FirstOther = 3;
    constexpr unsigned CloseOnExec = 4; // CLOSE_RANGE_CLOEXEC, since Linux 5.11
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != static_cast<pid_t>(parent))
        ::_exit(1);
    ::syscall(SYS_close_range, FirstOther, ~0U, CloseOnExec);
}

} // namespace Quorlin::ChildSetUp
