#pragma once

#include "winsupport/CTimer.h"
#include "winsupport/SystemCopy.h"

#include <QObject>

#include <memory>

namespace Quorlin {

/// Copies one file at a time to another name, with progress, and can be asked to stop.
///
/// Belongs to the thread of the windows. Handlers may cancel, ask for another copy (which is
/// refused) and delete the object, in a synchronous call too.
class clsKelCopyFile : public QObject
{
    Q_OBJECT

public:
    explicit clsKelCopyFile(QObject *parent = nullptr);
    /// @param system does the work; not owned, must outlive the object.
    explicit clsKelCopyFile(SystemCopy &system, QObject *parent = nullptr);
    /// Cancels the copy under way; a `CopyFile` that waits for it returns false.
    ~clsKelCopyFile() override;

    /// Starts a copy, which begins 50 ms later.
    /// @param Overwrite of no effect on ordinary files: they are replaced in any case.
    /// @param Synchronous to return when the copy has ended, handling events meanwhile.
    /// @return false when a copy is under way or no timer is to be had. Otherwise whether a
    /// synchronous copy succeeded, and true for any other: its outcome comes with
    /// `FileFinished`.
    [[nodiscard]] bool CopyFile(const QString &SrcFile, const QString &DstFile,
                                bool Overwrite = false, bool Synchronous = false);

    /// Asks the copy under way to stop; without one nothing happens. After this, an object that
    /// copied without waiting refuses further copies.
    void Cancel();

    /// What mdlKelCopyFile hands on of the system's progress, in bytes.
    void CopyProgress(qint64 total, qint64 copied);

Q_SIGNALS:
    void FileBegin(const QString &SrcFile, const QString &DstFile);
    void FilePercent(qint16 percent, const QString &SrcFile, const QString &DstFile);
    /// A synchronous copy that fails says so only through the result of `CopyFile`.
    void FileFinished(bool success, const QString &SrcFile, const QString &DstFile);

protected:
    /// Whether there is anything of exactly this name, folder or file.
    [[nodiscard]] virtual bool folderTest(const QString &name) const;
    /// Never sees an existing file, since folderTest() sees it too. On purpose: replacing the
    /// destination is left to the system's copy.
    [[nodiscard]] virtual bool fileTest(const QString &name) const;
    /// Deletes what fileTest() sees. @return whether it is gone.
    [[nodiscard]] bool deleteFile(const QString &name) const;

private:
    struct Call;

    void launch();
    void runSystemCopy(const std::shared_ptr<Call> &call);
    void reportEnd(const std::shared_ptr<Call> &call);
    void reportFailure(const std::shared_ptr<Call> &call);
    [[nodiscard]] bool waitForEnd();
    [[nodiscard]] bool startTimer();

    SystemCopy &m_system;
    CTimer vLaunchTimer;
    bool m_busy = false;
    std::shared_ptr<Call> m_asked;   // by the last CopyFile
    std::shared_ptr<Call> m_running; // in the system's copy
};

} // namespace Quorlin
