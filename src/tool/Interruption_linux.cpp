#include "tool/Interruption.h"

#include <QSocketNotifier>

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

namespace Quorlin {

namespace {

sigset_t watchedSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    return set;
}

} // namespace

struct Interruption::Channel
{
    int descriptor = -1;
    sigset_t before{};
    std::unique_ptr<QSocketNotifier> notifier;
};

Interruption::Interruption(QObject *parent) : QObject(parent), m_channel(new Channel)
{
    const auto watched = watchedSignals();
    ::pthread_sigmask(SIG_BLOCK, &watched, &m_channel->before);
    m_channel->descriptor = ::signalfd(-1, &watched, SFD_CLOEXEC | SFD_NONBLOCK);
    if (m_channel->descriptor < 0) {
        ::pthread_sigmask(SIG_SETMASK, &m_channel->before, nullptr);
        return;
    }
    m_channel->notifier =
        std::make_unique<QSocketNotifier>(m_channel->descriptor, QSocketNotifier::Read);
    connect(m_channel->notifier.get(), &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo info{};
        if (::read(m_channel->descriptor, &info, sizeof info) != sizeof info)
            return;
        ::pthread_sigmask(SIG_SETMASK, &m_channel->before, nullptr);
        Q_EMIT requested(static_cast<int>(info.ssi_signo));
    });
}

Interruption::~Interruption()
{
    m_channel->notifier.reset();
    if (m_channel->descriptor < 0)
        return;
    ::close(m_channel->descriptor);
    ::pthread_sigmask(SIG_SETMASK, &m_channel->before, nullptr);
}

} // namespace Quorlin
