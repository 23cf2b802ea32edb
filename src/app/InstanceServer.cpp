#include "app/InstanceServer.h"

#include "app/LocalSocket.h"

#include <QPointer>

namespace Quorlin {

namespace {

// A flood must not keep the window from its own events.
constexpr int MostAtOnce = 32;
constexpr int PauseMilliseconds = 100;

} // namespace

InstanceServer::InstanceServer(Descriptor listener, InstanceConnection::Handler handler)
    : m_listener(std::move(listener)), m_handler(std::move(handler)),
      m_notifier(m_listener.number(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &InstanceServer::acceptSome);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] { m_notifier.setEnabled(true); });
}

void InstanceServer::acceptSome()
{
    const QPointer<InstanceServer> self(this);
    bool mayGoOn = true;
    for (int taken = 0; self && taken < MostAtOnce; ++taken) {
        auto socket = LocalSocket::acceptFrom(m_listener, mayGoOn);
        if (!socket.isOpen())
            break;
        if (LocalSocket::isOfSameUser(socket))
            serve(std::move(socket));
    }
    if (!self || mayGoOn)
        return;
    // The system says at once again that somebody waits; without a pause nothing else would run.
    m_notifier.setEnabled(false);
    m_pause.start(PauseMilliseconds);
}

/// Most have said everything when they are accepted.
void InstanceServer::serve(Descriptor socket)
{
    if (connections() >= MostConnections)
        forget(m_connections.constFirst());
    auto *const connection = new InstanceConnection(std::move(socket), m_handler, this);
    m_connections.append(connection);
    connect(connection, &InstanceConnection::finished, this,
            [this, connection] { forget(connection); });
    connection->read();
}

void InstanceServer::forget(InstanceConnection *connection)
{
    m_connections.removeOne(connection);
    connection->close();
    connection->deleteLater();
}

} // namespace Quorlin
