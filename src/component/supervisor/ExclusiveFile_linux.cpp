#include "component/supervisor/ExclusiveFile.h"

#include <QByteArray>
#include <QFile>

#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin::ExclusiveFile {

namespace {

Result resultOf(int error)
{
    switch (error) {
    case EEXIST:
        return Result::Exists;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return Result::NoRoom;
    case EACCES:
    case EPERM:
    case EROFS:
        return Result::NotAllowed;
    default:
        return Result::Failed;
    }
}

/// Copies all bytes between two open files. @return 0 or the error number.
int copyBytes(int from, int to)
{
    for (;;) {
        const auto count = ::sendfile(to, from, nullptr, size_t{1} << 30);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count == 0 ? 0 : errno;
    }
}

/// @return the descriptor, or -1 with errno set.
int openRegular(const QByteArray &path)
{
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status = {};
    if (descriptor < 0 || (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)))
        return descriptor;
    ::close(descriptor);
    errno = EINVAL;
    return -1;
}

std::optional<struct statx> statusOf(const QString &path)
{
    struct statx status = {};
    const int result = ::statx(AT_FDCWD, QFile::encodeName(path).constData(), AT_SYMLINK_NOFOLLOW,
                               STATX_BASIC_STATS | STATX_BTIME, &status);
    return result == 0 ? std::optional(status) : std::nullopt;
}

QString identity(const struct statx &status)
{
    return QStringLiteral("%1.%2:%3:%4.%5")
        .arg(status.stx_dev_major)
        .arg(status.stx_dev_minor)
        .arg(status.stx_ino)
        .arg(status.stx_btime.tv_sec)
        .arg(status.stx_btime.tv_nsec);
}

Result copyExclusively(const QByteArray &from, const QByteArray &to,
                       const std::function<void()> &created)
{
    const int source = openRegular(from);
    if (source < 0)
        return resultOf(errno);
    const int target = ::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (target < 0) {
        const auto result = resultOf(errno);
        ::close(source);
        return result;
    }
    created();
    int error = copyBytes(source, target);
    ::close(source);
    if (::close(target) != 0 && error == 0)
        error = errno;
    if (error == 0)
        return Result::Done;
    ::unlink(to.constData());
    return resultOf(error);
}

} // namespace

QString identityOf(const QString &path)
{
    const auto status = statusOf(path);
    return status ? identity(*status) : QString();
}

QString versionOf(const QString &path)
{
    const auto status = statusOf(path);
    if (!status)
        return {};
    return identity(*status) + QStringLiteral(":%1:%2.%3")
                                   .arg(status->stx_size)
                                   .arg(status->stx_mtime.tv_sec)
                                   .arg(status->stx_mtime.tv_nsec);
}

Result publish(const QString &from, const QString &to, const std::function<void()> &created)
{
    const auto source = QFile::encodeName(from);
    const auto target = QFile::encodeName(to);
    if (::link(source.constData(), target.constData()) == 0) {
        created();
        return Result::Done;
    }
    if (errno == EEXIST)
        return Result::Exists;
    return copyExclusively(source, target, created);
}

Result copy(const QString &from, const QString &to)
{
    return copyExclusively(QFile::encodeName(from), QFile::encodeName(to), [] {});
}

} // namespace Quorlin::ExclusiveFile
