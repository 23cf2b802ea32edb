#pragma once

#include <thread>

namespace Quorlin {

/// Ends this process and its whole process group as soon as the process that started it is
/// gone. The end of the pipe tells the same, but only when the work at hand is done.
class OrphanWatch
{
public:
    OrphanWatch();
    ~OrphanWatch();
    OrphanWatch(const OrphanWatch &) = delete;
    OrphanWatch &operator=(const OrphanWatch &) = delete;

private:
    int m_wake; ///< told to stop watching
    std::jthread m_thread;
};

} // namespace Quorlin
