#pragma once

#include "winsupport/FileCopy.h"

#include <atomic>
#include <thread>

namespace Quorlin {

/// Runs a copy on a thread of its own and wakes the thread that started it at all news.
class CopyThread
{
public:
    /// @param work must outlive the object.
    explicit CopyThread(FileCopy &work);
    /// Stops the copy and waits until the thread has ended.
    ~CopyThread();
    CopyThread(const CopyThread &) = delete;
    CopyThread &operator=(const CopyThread &) = delete;

    [[nodiscard]] bool isFinished() const { return m_finished; }
    /// Waits until the thread has ended.
    [[nodiscard]] SystemCopy::Outcome outcome();

private:
    FileCopy &m_work;
    SystemCopy::Outcome m_outcome;
    std::atomic<bool> m_finished = false;
    std::thread m_thread; // last, so that it starts after all else is there
};

} // namespace Quorlin
