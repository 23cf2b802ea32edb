#pragma once

#include <QTimer>

namespace Quorlin {

/// Handles the events of a thread that waits for something without sleeping on its windows.
class EventPump
{
public:
    /// The longest rest between two turns, in milliseconds.
    static constexpr int LongestRest = 25;

    EventPump();

    /// Handles what is pending, once.
    void runPending();

    /// Rests until there are events, at most LongestRest, and handles them.
    void waitAndRun();

private:
    QTimer m_beat;
};

} // namespace Quorlin
