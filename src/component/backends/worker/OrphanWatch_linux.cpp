#include "component/backends/worker/OrphanWatch.h"

#include <array>
#include <csignal>
#include <cstdint>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace Quorlin {

namespace {

constexpr int LookEvery = 250; ///< ms between two looks for the parent, once the pipe is closed

/// A closed pipe alone is no reason: whoever closed it may still wait for the last answer.
void watch(pid_t parent, int wake)
{
    std::array<pollfd, 2> watched{pollfd{wake, POLLIN, 0}, pollfd{STDIN_FILENO, 0, 0}};
    int limit = -1;
    while (::getppid() == parent) {
        ::poll(watched.data(), watched.size(), limit);
        if ((watched[0].revents & POLLIN) != 0)
            return;
        if (watched[1].revents != 0) {
            watched[1].fd = -1;
            limit = LookEvery;
        }
    }
    if (::getpgrp() == ::getpid())
        ::kill(0, SIGKILL);
    ::_exit(1);
}

} // namespace

OrphanWatch::OrphanWatch() : m_wake(::eventfd(0, EFD_CLOEXEC)), m_thread(watch, ::getppid(), m_wake)
{
}

OrphanWatch::~OrphanWatch()
{
    const std::uint64_t one = 1;
    (void)!::write(m_wake, &one, sizeof one);
    m_thread.join();
    ::close(m_wake);
}

} // namespace Quorlin
