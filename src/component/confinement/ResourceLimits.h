#pragma once

#include <QtGlobal>

namespace Quorlin {

/// What one process may take of the machine. The last line, enforced by the kernel; a watch that
/// can say what happened stands before it.
struct ResourceLimits
{
    qint64 memoryBytes = 0; ///< of its own, not shared with others; 0 without limit
    qint64 fileBytes = 0;   ///< size of any file that it writes; 0 without limit
    qint64 cpuSeconds = 0;  ///< in its whole life; 0 without limit

    /// For this process and what it starts. Safe between fork and exec.
    void apply() const noexcept;

    /// The memory of the machine, in bytes.
    [[nodiscard]] static qint64 machineMemory();
};

} // namespace Quorlin
