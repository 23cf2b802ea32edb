#include "component/backends/worker/StandardPipe.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace Quorlin {

StandardPipe::StandardPipe() : m_output(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3))
{
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    std::signal(SIGPIPE, SIG_IGN);
}

StandardPipe::~StandardPipe()
{
    if (m_output >= 0)
        ::close(m_output);
}

QByteArray StandardPipe::read()
{
    QByteArray bytes(65536, Qt::Uninitialized);
    for (;;) {
        const auto count = ::read(STDIN_FILENO, bytes.data(), static_cast<size_t>(bytes.size()));
        if (count < 0 && errno == EINTR)
            continue;
        bytes.truncate(count > 0 ? count : 0);
        return bytes;
    }
}

bool StandardPipe::write(const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const auto count =
            ::write(m_output, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += count;
    }
    return true;
}

} // namespace Quorlin
