#pragma once

#include "app/FrameReader.h"
#include "winsupport/Descriptor.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>

namespace Quorlin {

/// One who speaks to this instance: at most one frame, within a limited time.
class InstanceConnection : public QObject
{
    Q_OBJECT

public:
    using Handler = std::function<void(const HandoffFrame &)>;

    /// Time for the whole frame.
    static constexpr int MostMilliseconds = 2000;

    /// @param handler gets the frame; the sender is told after it has returned.
    InstanceConnection(Descriptor socket, const Handler &handler, QObject *parent);

    /// Reads what is there. May delete the server's objects, through the handler.
    void read();
    /// Hangs up; nothing is read or handed on any more.
    void close();

Q_SIGNALS:
    /// Nothing more comes of it. Sent once.
    void finished();

private:
    Descriptor m_socket;
    Handler m_handler;
    FrameReader m_reader;
    QSocketNotifier m_notifier;
    QTimer m_limit;
    bool m_isFinished = false;

    [[nodiscard]] bool readMore();
    void handOn();
    void finish();
};

} // namespace Quorlin
