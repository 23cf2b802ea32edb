#pragma once

#include <QFile>
#include <QLockFile>
#include <QMutex>
#include <QString>
#include <QStringList>

#include <memory>

namespace Quorlin {

/// What a component has lying about, written down before it is made, so that the next one can
/// remove what a killed one left.
///
/// One file per process in the journal folder, held by a lock while the process lives.
class Journal
{
public:
    /// @param folder where all journals of this user are; made when missing.
    explicit Journal(const QString &folder);
    ~Journal();
    Journal(const Journal &) = delete;
    Journal &operator=(const Journal &) = delete;

    /// The journal folder of this user.
    [[nodiscard]] static QString defaultFolder();

    /// Opens this process's own journal. @return false when it cannot be written; the
    /// component works without one then.
    [[nodiscard]] bool open();

    /// Note before a file is made at this path, by copying or linking the one at `source`.
    /// The notes may be written from any thread.
    void planFile(const QString &path, const QString &source);
    /// Note once it is there, before its content; only the very file is ever removed.
    void madeFile(const QString &path);
    /// Note before a working folder is made.
    void planFolder(const QString &path);

    /// Removes what processes left that are no more, and their journals. What cannot be removed
    /// stays noted for the next time.
    /// @return the paths that were removed.
    QStringList recover();

    /// The journal goes, unless something that it notes is still there: then the next recover()
    /// of any process finds it.
    void close();

private:
    void write(const char *word, const QString &path, const QString &identity = {});
    void recoverOne(const QString &journalPath, QStringList &removed);

    QString m_folder;
    QMutex m_mutex; ///< guards the file
    QFile m_file;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace Quorlin
