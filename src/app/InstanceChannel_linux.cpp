#include "app/InstanceChannel.h"

#include "app/InstanceLock.h"
#include "app/InstanceServer.h"
#include "app/LocalSocket.h"
#include "app/RuntimeFolder.h"

#include <QThread>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr unsigned long PauseMilliseconds = 20;

QByteArray nameFor(const char *ending)
{
    return "instance-" + RuntimeFolder::screenName() + ending;
}

} // namespace

struct InstanceChannel::Parts
{
    explicit Parts(RuntimeFolder where)
        : folder(std::move(where)), socketPath(folder.pathOf(nameFor(".socket"))),
          lock(folder.pathOf(nameFor(".lock")))
    {
    }

    RuntimeFolder folder;
    QByteArray socketPath;
    InstanceLock lock;
    std::unique_ptr<InstanceServer> server;

    [[nodiscard]] Descriptor connected() const
    {
        auto socket = folder.isOpen() ? LocalSocket::connectTo(socketPath) : Descriptor(-1);
        const bool isSafe = socket.isOpen() && LocalSocket::isOfSameUser(socket);
        return isSafe ? std::move(socket) : Descriptor(-1);
    }

    [[nodiscard]] bool tryToDeliver(const QByteArray &bytes, const QDeadlineTimer &limit) const
    {
        const auto socket = connected();
        return socket.isOpen() && LocalSocket::sendAll(socket, bytes, limit) &&
               LocalSocket::receiveByte(socket, limit) == HandoffFrame::Acknowledged;
    }
};

InstanceChannel::InstanceChannel(const QString &folder)
    : m_parts(std::make_unique<Parts>(folder.isEmpty() ? RuntimeFolder::ofSession()
                                                       : RuntimeFolder::at(folder)))
{
}

InstanceChannel::~InstanceChannel()
{
    giveUp();
}

InstanceChannel::Mark InstanceChannel::claim()
{
    if (!m_parts->folder.isOpen())
        return Mark::None;
    switch (m_parts->lock.take()) {
    case InstanceLock::Holder::Us:
        return Mark::Ours;
    case InstanceLock::Holder::Others:
        return Mark::Others;
    case InstanceLock::Holder::Unknown:
        break;
    }
    return Mark::None;
}

bool InstanceChannel::listen(const Handler &handler)
{
    if (isListening())
        return true;
    if (!m_parts->lock.isHeld())
        return false;
    auto listener = LocalSocket::listenAt(m_parts->socketPath);
    if (!listener.isOpen())
        return false;
    m_parts->server = std::make_unique<InstanceServer>(std::move(listener), handler);
    return true;
}

bool InstanceChannel::isListening() const
{
    return m_parts->server != nullptr;
}

/// The name goes before the mark: the next holder's name must not be taken away.
void InstanceChannel::giveUp()
{
    if (isListening())
        LocalSocket::removeName(m_parts->socketPath);
    m_parts->server.reset();
    m_parts->lock.release();
}

bool InstanceChannel::isServerThere() const
{
    return m_parts->connected().isOpen();
}

/// Tries again while there is time: the holder of the mark may be changing just now.
bool InstanceChannel::deliver(const HandoffFrame &frame) const
{
    const auto bytes = frame.encoded();
    const QDeadlineTimer limit(DeliveryMilliseconds);
    while (!m_parts->tryToDeliver(bytes, limit)) {
        if (limit.hasExpired())
            return false;
        QThread::msleep(PauseMilliseconds);
    }
    return true;
}

bool InstanceChannel::post(const HandoffFrame &frame) const
{
    const auto socket = m_parts->connected();
    return socket.isOpen() && LocalSocket::sendAll(socket, frame.encoded(), QDeadlineTimer(0));
}

} // namespace Quorlin
