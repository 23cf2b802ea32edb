#pragma once

#include "app/InstanceConnection.h"

#include <QList>

namespace Quorlin {

/// Takes the frames of other instances. Everything happens in the event loop of its thread.
class InstanceServer : public QObject
{
    Q_OBJECT

public:
    /// So many speak at a time; when another comes, the one that has been silent longest goes.
    static constexpr int MostConnections = 128;

    /// @param listener a socket that listens; owned from now on.
    /// @param handler gets each frame, in the order in which they became whole.
    InstanceServer(Descriptor listener, InstanceConnection::Handler handler);

    [[nodiscard]] int connections() const { return static_cast<int>(m_connections.size()); }

private:
    Descriptor m_listener;
    InstanceConnection::Handler m_handler;
    QSocketNotifier m_notifier;
    QTimer m_pause;
    QList<InstanceConnection *> m_connections;

    void acceptSome();
    void serve(Descriptor socket);
    void forget(InstanceConnection *connection);
};

} // namespace Quorlin
