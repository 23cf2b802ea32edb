#include "app/InstanceLock.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace Quorlin {

namespace {

// The sticky bit keeps cleaners of temporary folders away.
constexpr mode_t Mode = S_ISVTX | 0600;
constexpr int MostTries = 10;

Descriptor openFile(const QByteArray &path)
{
    constexpr int Flags = O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    Descriptor file(::open(path.constData(), Flags, Mode));
    struct stat status = {};
    const bool isFile = file.isOpen() && ::fstat(file.number(), &status) == 0 &&
                        S_ISREG(status.st_mode) && ::fchmod(file.number(), Mode) == 0;
    return isFile ? std::move(file) : Descriptor(-1);
}

/// False when the file was removed or replaced before it was locked.
bool isStillAt(const Descriptor &file, const QByteArray &path)
{
    struct stat ours = {};
    struct stat there = {};
    return ::fstat(file.number(), &ours) == 0 && ::lstat(path.constData(), &there) == 0 &&
           ours.st_dev == there.st_dev && ours.st_ino == there.st_ino;
}

} // namespace

InstanceLock::InstanceLock(QByteArray path) : m_path(std::move(path)) {}

InstanceLock::Holder InstanceLock::take()
{
    for (int attempt = 0; attempt < MostTries; ++attempt) {
        if (isHeld())
            return Holder::Us;
        const auto holder = tryToTake();
        if (holder != Holder::Us || isHeld())
            return holder;
    }
    return Holder::Unknown;
}

/// @return Us without holding anything when the file has gone: it is worth another try.
InstanceLock::Holder InstanceLock::tryToTake()
{
    auto file = openFile(m_path);
    if (!file.isOpen())
        return Holder::Unknown;
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? Holder::Others : Holder::Unknown;
    if (isStillAt(file, m_path))
        m_file = std::move(file);
    return Holder::Us;
}

void InstanceLock::release()
{
    m_file = Descriptor(-1);
}

} // namespace Quorlin
