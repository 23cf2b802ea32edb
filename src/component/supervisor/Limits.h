#pragma once

#include <QtGlobal>

namespace Quorlin {

/// What one document may take in one stage, and how many of a job are worked on at once.
struct Limits
{
    int startMs = 60'000;   ///< a worker's start, until it greets, in milliseconds
    int stallMs = 60'000;   ///< without any sign of progress, in milliseconds
    int totalMs = 600'000;  ///< altogether, and of the processor's time, in milliseconds
    int atOnce = 0;         ///< documents at the most; 0 leaves it to the component
    qint64 memoryBytes = 0; ///< that its processes have for themselves; 0: usualMemory()
    qint64 diskBytes = qint64{8} << 30; ///< that its files take in the working folder

    /// Half of the machine's memory, but not less than 1 GiB and not more than 4 GiB.
    [[nodiscard]] static qint64 usualMemory();
};

} // namespace Quorlin
