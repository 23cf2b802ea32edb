#include "winsupport/TemporaryFile.h"

#include "winsupport/SystemFailure.h"

#include <QRandomGenerator>

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin {

namespace {

constexpr int MostTries = 100;
constexpr char Prefix[] = ".quorlin-";
constexpr char Suffix[] = ".part";
constexpr int Digits = 16;

QByteArray newName()
{
    const auto random = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    return Prefix + random.rightJustified(Digits, '0') + Suffix;
}

bool isTemporaryName(const QByteArray &name)
{
    return name.startsWith(Prefix) && name.endsWith(Suffix) &&
           name.size() == int(sizeof Prefix + sizeof Suffix) - 2 + Digits;
}

/// Whether the name still leads to the open file.
bool isNamed(int folder, const QByteArray &name, int file)
{
    struct stat open = {};
    struct stat named = {};
    return ::fstat(file, &open) == 0 &&
           ::fstatat(folder, name.constData(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

void removeWhenLeftOver(int folder, const QByteArray &name)
{
    const Descriptor file(
        ::openat(folder, name.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status = {};
    // The lock is given back with the descriptor, after the name has gone.
    if (file.isOpen() && ::fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode) &&
        ::flock(file.number(), LOCK_EX | LOCK_NB) == 0 && isNamed(folder, name, file.number()))
        ::unlinkat(folder, name.constData(), 0);
}

} // namespace

TemporaryFile::TemporaryFile(int folder, unsigned int mode) : m_folder(folder)
{
    for (int tries = 0; tries < MostTries; ++tries)
        if (tryName(mode))
            return;
    SystemFailure::raise(EEXIST, "no name for a temporary file");
}

TemporaryFile::~TemporaryFile()
{
    if (!m_name.isEmpty())
        ::unlinkat(m_folder, m_name.constData(), 0);
}

/// Another program may take the new file for a left-over before it is locked; a system that
/// knows no locks never does.
bool TemporaryFile::tryName(unsigned int mode)
{
    const auto name = newName();
    Descriptor file(::openat(m_folder, name.constData(),
                             O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!file.isOpen() && errno == EEXIST)
        return false;
    if (!file.isOpen())
        SystemFailure::raiseLast("no temporary file beside the destination");
    const bool taken = ::flock(file.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (taken || !isNamed(m_folder, name, file.number()))
        return false;
    m_name = name;
    m_file = std::move(file);
    return true;
}

void TemporaryFile::rename(const QByteArray &name)
{
    if (::renameat(m_folder, m_name.constData(), m_folder, name.constData()) != 0)
        SystemFailure::raiseLast("the destination cannot be replaced");
    m_name.clear();
}

void TemporaryFile::removeLeftOvers(int folder)
{
    const int again = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (again < 0)
        return;
    const std::unique_ptr<DIR, int (*)(DIR *)> list(
        ::fdopendir(again), [](DIR *open) { return open ? ::closedir(open) : 0; });
    if (!list)
        ::close(again);
    while (const auto *entry = list ? ::readdir(list.get()) : nullptr)
        if (isTemporaryName(entry->d_name))
            removeWhenLeftOver(folder, entry->d_name);
}

} // namespace Quorlin
