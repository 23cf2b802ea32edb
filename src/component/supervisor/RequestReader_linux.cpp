#include "component/supervisor/RequestReader.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace Quorlin {

RequestReader::RequestReader(QObject *parent)
    : QObject(parent), m_input(new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this)),
      m_output(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3))
{
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    std::signal(SIGPIPE, SIG_IGN);
    connect(m_input, &QSocketNotifier::activated, this, &RequestReader::readInput);
    watchSignals();
}

RequestReader::~RequestReader()
{
    if (m_output >= 0)
        ::close(m_output);
}

void RequestReader::write(const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const auto count =
            ::write(m_output, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        done += count;
    }
}

void RequestReader::readInput()
{
    QByteArray bytes(65536, Qt::Uninitialized);
    const auto count = ::read(STDIN_FILENO, bytes.data(), static_cast<size_t>(bytes.size()));
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0) {
        m_input->setEnabled(false);
        Q_EMIT ended();
        return;
    }
    bytes.truncate(count);
    Q_EMIT arrived(bytes);
}

void RequestReader::watchSignals()
{
    sigset_t mask;
    sigemptyset(&mask);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&mask, number);
    sigprocmask(SIG_BLOCK, &mask, nullptr);
    const int descriptor = ::signalfd(-1, &mask, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor < 0)
        return;
    m_signals = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
    connect(m_signals, &QSocketNotifier::activated, this, &RequestReader::ended);
}

} // namespace Quorlin
