#pragma once

#include "winsupport/SystemCopy.h"

#include <atomic>
#include <functional>

namespace Quorlin {

/// The work of one copy, made to run on a thread of its own and to be watched from another.
///
/// The bytes go into a hidden temporary file in the destination's folder, which takes the
/// destination's name when all of them are on the disk. Whatever happens before leaves the old
/// file whole. Temporary files of programs that died are removed on the way.
///
/// - A link at the destination is written through; its target need not exist.
/// - A destination without any permission to write is refused, to the administrator too; so is
///   one that this user may not write, and anything that is no ordinary file.
/// - A folder that takes no new files is an error even when the destination itself could be
///   written: writing over the old file could lose it.
/// - A new file has the permissions of any new file; a replaced one keeps its permissions and,
///   where this user may set them, its owner and group. The time of the last change is the
///   source's.
/// - As many bytes are copied as the source had at the start. One that ends earlier is an error;
///   what is added to it meanwhile is left out.
///
/// One source per system stands beside this header.
class FileCopy
{
public:
    FileCopy(const QString &source, const QString &destination);

    /// Copies. @param news called on this thread when something has changed.
    /// @return a failure for whatever goes wrong, an exception of `news` too.
    [[nodiscard]] SystemCopy::Outcome run(const std::function<void()> &news);

    /// Asks run() to stop soon; from any thread. Too late after goOn().
    void stop() { decide(Decision::Stop); }

    /// True while all bytes are on the disk and run() waits for goOn() or stop().
    [[nodiscard]] bool isWaiting() const { return m_complete && m_decision == Decision::None; }
    /// Lets the copy take the destination's name, now or once it is complete.
    void goOn() { decide(Decision::Go); }

    /// The size to be copied; -1 until it is known.
    [[nodiscard]] qint64 total() const { return m_total; }
    /// Bytes in the temporary file.
    [[nodiscard]] qint64 copied() const { return m_copied; }

private:
    enum class Decision { None, Go, Stop };

    void decide(Decision decision);
    void copy(const std::function<void()> &news);
    [[nodiscard]] bool mayFinish(const std::function<void()> &news);
    [[nodiscard]] bool note(qint64 copied, const std::function<void()> &news);

    QString m_source;
    QString m_destination;
    std::atomic<Decision> m_decision = Decision::None;
    std::atomic<bool> m_complete = false;
    std::atomic<qint64> m_total = -1;
    std::atomic<qint64> m_copied = 0;
};

} // namespace Quorlin
