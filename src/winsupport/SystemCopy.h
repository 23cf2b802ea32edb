#pragma once

#include <QString>

#include <functional>

namespace Quorlin {

/// The system's copy of one file, with progress and a switch to stop it.
class SystemCopy
{
public:
    struct Outcome
    {
        bool success = false;
        int error = 0; ///< the system's number; 0 when all is well
        QString text;  ///< what went wrong, for a log
    };

    /// Told the total size and the bytes copied so far, on the thread that called. The two are
    /// equal only once the file is in place and on the disk.
    /// @return 0 to go on; any other value stops the copy.
    using Progress = std::function<quint32(qint64 total, qint64 copied)>;

    virtual ~SystemCopy() = default;

    /// Copies a file; an existing destination is replaced in one step at the end. Returns when
    /// all is done and handles the thread's events until then.
    /// @param cancel looked at all the time; true stops the copy. Changed by this thread only.
    [[nodiscard]] virtual Outcome copy(const QString &source, const QString &destination,
                                       const Progress &progress, const bool &cancel) = 0;

    /// The copy of this system.
    [[nodiscard]] static SystemCopy &native();
};

} // namespace Quorlin
