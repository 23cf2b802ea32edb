#include "winsupport/Interruption.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>

#include <sys/eventfd.h>
#include <unistd.h>

namespace Quorlin {

namespace {

/// What a signal's handler can reach: where it tells of the signal, and which it was. The signals
/// are not blocked, since programs that are started from here would inherit that.
std::atomic<int> g_channel{-1};
std::atomic<int> g_number{0};

void setDefault()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

extern "C" void quorlinTellSignal(int number)
{
    const auto before = errno;
    setDefault();
    g_number = number;
    const std::uint64_t one = 1;
    // Nobody hears of a channel that is full; it never is, since the second signal comes no more.
    [[maybe_unused]] const auto written = ::write(g_channel, &one, sizeof one);
    errno = before;
}

} // namespace

struct Interruption::Channel
{
    int descriptor = -1;
    std::unique_ptr<QSocketNotifier> notifier;
};

Interruption::Interruption(QObject *parent) : QObject(parent), m_channel(new Channel)
{
    m_channel->descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (m_channel->descriptor < 0)
        return;
    g_channel = m_channel->descriptor;
    m_channel->notifier =
        std::make_unique<QSocketNotifier>(m_channel->descriptor, QSocketNotifier::Read);
    connect(m_channel->notifier.get(), &QSocketNotifier::activated, this, [this] {
        std::uint64_t count = 0;
        if (::read(m_channel->descriptor, &count, sizeof count) == sizeof count)
            Q_EMIT requested(g_number);
    });
    std::signal(SIGINT, quorlinTellSignal);
    std::signal(SIGTERM, quorlinTellSignal);
}

Interruption::~Interruption()
{
    if (m_channel->descriptor < 0)
        return;
    setDefault();
    g_channel = -1;
    m_channel->notifier.reset();
    ::close(m_channel->descriptor);
}

} // namespace Quorlin
