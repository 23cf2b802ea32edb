#pragma once

#include <QByteArray>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>

namespace Quorlin {

/// The lines on standard input, read beside the work so that its end is noticed at once.
class FakeRequests
{
public:
    FakeRequests();
    ~FakeRequests();
    FakeRequests(const FakeRequests &) = delete;
    FakeRequests &operator=(const FakeRequests &) = delete;

    /// Waits for the next line; nothing at end-of-file.
    [[nodiscard]] std::optional<QByteArray> next();

    /// Waits for the time to pass or for end-of-file. @return true at end-of-file.
    bool waitForEnd(std::chrono::milliseconds time);

private:
    void read();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<QByteArray> m_lines;
    bool m_ended = false;
    std::thread m_reader;
};

} // namespace Quorlin
