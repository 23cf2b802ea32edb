#pragma once

#include <QByteArray>
#include <QString>

namespace Quorlin {

/// What tests need of the system beyond Qt. One source per system stands beside this header.
namespace SystemActions {

/// Makes a named pipe that nobody reads or writes.
[[nodiscard]] bool makeFifo(const QString &path);

/// Makes an empty file. @param path in the system's own bytes, which need not be text.
[[nodiscard]] bool makeFile(const QByteArray &path);
/// Removes a file, given in the same way.
[[nodiscard]] bool removeFile(const QByteArray &path);

/// Gives a file a second name, no link to follow.
[[nodiscard]] bool makeSecondName(const QString &existing, const QString &path);

/// Path of the device that takes everything and gives nothing.
[[nodiscard]] QString nullDevice();

/// Path of a device that gives zeros for ever.
[[nodiscard]] QString endlessFile();

/// A writable folder on another file system than `path`; empty when there is none.
[[nodiscard]] QString folderOnOtherFileSystem(const QString &path);

/// True while a process runs; one that has ended and was not reaped does not count.
[[nodiscard]] bool isRunning(qint64 process);

/// Ends a process that this test started, without any chance for it to clean up.
void kill(qint64 process);

/// Asks a process that this test started to end.
void askToEnd(qint64 process);

/// Asks it in the way of somebody at the keyboard.
void interrupt(qint64 process);

/// The leader of a process's group.
[[nodiscard]] qint64 groupOf(qint64 process);

/// Permission bits of a file or folder, as in 0700; -1 when there is none.
[[nodiscard]] int modeOf(const QString &path);

/// Sets the permission bits that this process's new files do not get, and returns the earlier.
int setFileMask(int mask);

/// True while somebody else has locked a byte of a file.
[[nodiscard]] bool isLocked(const QString &path, qint64 byte);

/// Sets how many files this process may have open, and returns the earlier number.
int limitOpenFiles(int most);

} // namespace SystemActions

/// While it lives, this process has no more rights than an ordinary user: what the
/// administrator may read and write anyway is refused as it would be to others.
class OrdinaryUser
{
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    bool m_changed;
};

/// A file system of a few kilobytes, mounted on a folder.
class SmallDisk
{
public:
    /// @param folder empty folder that becomes the disk.
    SmallDisk(const QString &folder, int kilobytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    /// False when this process may not mount.
    [[nodiscard]] bool isMounted() const { return m_mounted; }

    /// From now on nobody writes, not even the administrator.
    [[nodiscard]] bool makeReadOnly() const;

private:
    QString m_folder;
    bool m_mounted;
};

} // namespace Quorlin
