#include "settings/StoreFiles.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin::StoreFiles {

namespace {

/// A new entry is safe only when its folder is on the disk.
bool syncFolderOf(const QString &path)
{
    const auto folder = QFile::encodeName(QFileInfo(path).path());
    const auto handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return false;
    const auto done = ::fsync(handle) == 0 || errno == EINVAL;
    ::close(handle);
    return done;
}

} // namespace

Kind kindOf(const QString &path)
{
    const auto name = QFile::encodeName(path);
    struct stat status = {};
    if (::stat(name.constData(), &status) == 0)
        return S_ISREG(status.st_mode) ? Kind::File : Kind::Other;
    return ::lstat(name.constData(), &status) == 0 ? Kind::Other : Kind::Missing;
}

bool makeFolder(const QString &path, Audience audience)
{
    if (QFileInfo(path).isDir())
        return true;
    const auto above = QFileInfo(path).path();
    if (above == path || !makeFolder(above, audience))
        return false;
    const auto mode = audience == Audience::Owner ? 0700 : 0755;
    const auto name = QFile::encodeName(path);
    if (::mkdir(name.constData(), mode) == 0)
        return ::chmod(name.constData(), mode) == 0 && syncFolderOf(path);
    return errno == EEXIST && QFileInfo(path).isDir();
}

bool makeFile(const QString &path, Audience audience)
{
    const auto mode = audience == Audience::Owner ? 0600 : 0644;
    const auto handle = ::open(QFile::encodeName(path).constData(),
                               O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    if (handle < 0)
        return errno == EEXIST && kindOf(path) == Kind::File;
    const auto done = ::fchmod(handle, mode) == 0;
    return ::close(handle) == 0 && done && syncFolderOf(path);
}

bool rename(const QString &from, const QString &to)
{
    const auto oldName = QFile::encodeName(from);
    const auto newName = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, oldName.constData(), AT_FDCWD, newName.constData(),
                    RENAME_NOREPLACE) == 0)
        return syncFolderOf(to);
    // Some file systems cannot do that in one step.
    return errno == EINVAL && ::link(oldName.constData(), newName.constData()) == 0 &&
           ::unlink(oldName.constData()) == 0 && syncFolderOf(to);
}

} // namespace Quorlin::StoreFiles
