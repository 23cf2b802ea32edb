#include "settings/WriterLock.h"

#include <QFile>

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin {

namespace {

using State = WriterLock::State;

constexpr std::chrono::microseconds Pause{100};

// Whoever is next holds the first byte while it waits for the second.
constexpr off_t NextByte = 0;
constexpr off_t WritingByte = 1;

/// Locks of the open file, not of the process: two objects of one process exclude each other,
/// and another handle that is closed takes nothing away.
int setLock(int handle, off_t byte, short kind)
{
    struct flock lock = {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    return ::fcntl(handle, F_OFD_SETLK, &lock) == 0 ? 0 : errno;
}

State waitFor(int handle, off_t byte, const QDeadlineTimer &deadline)
{
    while (true) {
        const auto error = setLock(handle, byte, F_WRLCK);
        if (error == 0)
            return State::Held;
        if (error != EAGAIN && error != EACCES && error != EINTR)
            return State::Denied;
        if (deadline.hasExpired())
            return State::Busy;
        std::this_thread::sleep_for(Pause);
    }
}

State lockedState(int handle, const QDeadlineTimer &deadline)
{
    struct stat status = {};
    if (handle < 0 || ::fstat(handle, &status) != 0 || !S_ISREG(status.st_mode))
        return State::Denied;
    if (const auto next = waitFor(handle, NextByte, deadline); next != State::Held)
        return next;
    const auto writing = waitFor(handle, WritingByte, deadline);
    setLock(handle, NextByte, F_UNLCK);
    return writing;
}

} // namespace

WriterLock::WriterLock(const QString &path, const QDeadlineTimer &deadline)
    : m_handle(::open(QFile::encodeName(path).constData(),
                      O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600)),
      m_state(lockedState(m_handle, deadline))
{
}

WriterLock::~WriterLock()
{
    if (m_handle >= 0)
        ::close(m_handle);
}

} // namespace Quorlin
