#pragma once

#include <QObject>

#include <deque>
#include <functional>

namespace Quorlin {

/// Runs handlers from the event loop, one at a time and in order.
///
/// A handler runs to its end before the next one begins, also when it opens an event loop of
/// its own (a message box). Nothing runs inside post().
class EventQueue : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void post(std::function<void()> event);

private:
    void wake();
    void deliver();

    std::deque<std::function<void()>> m_events;
    bool m_delivering = false;
};

} // namespace Quorlin
