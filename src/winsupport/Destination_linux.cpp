#include "winsupport/Destination.h"

#include "winsupport/SystemFailure.h"

#include <array>
#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin {

namespace {

/// As many as the system itself follows.
constexpr int MostLinks = 40;
constexpr unsigned int AnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

QByteArray folderOf(const QByteArray &path)
{
    const auto slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.left(slash + 1);
}

/// @return empty when the path is no link, or nothing at all.
QByteArray linkAt(const QByteArray &path)
{
    std::array<char, PATH_MAX> text;
    const auto length = ::readlink(path.constData(), text.data(), text.size());
    if (length >= 0)
        return QByteArray(text.data(), length);
    if (errno != EINVAL && errno != ENOENT)
        SystemFailure::raiseLast("the destination cannot be found");
    return {};
}

QByteArray resolved(QByteArray path)
{
    for (int links = 0; links < MostLinks; ++links) {
        const auto link = linkAt(path);
        if (link.isEmpty())
            return path;
        path = link.startsWith('/') ? link : folderOf(path) + '/' + link;
    }
    SystemFailure::raise(ELOOP, "the destination's links lead in a circle");
}

void refuseUnlessReplaceable(const struct stat &status, int source)
{
    struct stat other = {};
    if (S_ISDIR(status.st_mode))
        SystemFailure::raise(EISDIR, "the destination is a folder");
    if (!S_ISREG(status.st_mode))
        SystemFailure::raise(EINVAL, "the destination is no ordinary file");
    if (::fstat(source, &other) != 0 ||
        (other.st_dev == status.st_dev && other.st_ino == status.st_ino))
        SystemFailure::raise(EINVAL, "source and destination are one file");
    if ((status.st_mode & AnyWrite) == 0)
        SystemFailure::raise(EACCES, "the destination is write-protected");
}

} // namespace

Destination::Destination(const QByteArray &path)
    : m_path(resolved(path)), m_name(m_path.mid(m_path.lastIndexOf('/') + 1)),
      m_folder(::open(folderOf(m_path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
      m_folderCanSync(m_folder.isOpen())
{
    if (m_name.isEmpty())
        SystemFailure::raise(EISDIR, "the destination has no name");
    // A folder that may not be listed may still take files.
    if (!m_folderCanSync)
        m_folder =
            Descriptor(::open(folderOf(m_path).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!m_folder.isOpen())
        SystemFailure::raiseLast("the destination's folder cannot be opened");
}

std::optional<Destination::Existing> Destination::existing(int source) const
{
    struct stat status = {};
    if (::fstatat(folder(), m_name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT)
            return std::nullopt;
        SystemFailure::raiseLast("the destination cannot be looked at");
    }
    refuseUnlessReplaceable(status, source);
    if (::faccessat(folder(), m_name.constData(), W_OK, AT_EACCESS) != 0)
        SystemFailure::raiseLast("the destination may not be written");
    return Existing{status.st_mode, status.st_uid, status.st_gid};
}

void Destination::syncNames(int file) const
{
    if (::fsync(m_folderCanSync ? folder() : file) != 0 && errno != EINVAL)
        SystemFailure::raiseLast("the destination's name cannot be written");
}

} // namespace Quorlin
