#include "support/SystemActions.h"

#include "support/TestFolder.h"

#include <QFile>

#include <csignal>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin {

namespace {

constexpr uid_t Nobody = 65534;

dev_t deviceOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_dev : 0;
}

} // namespace

namespace SystemActions {

bool makeFifo(const QString &path)
{
    return ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
}

bool makeFile(const QByteArray &path)
{
    const auto handle = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    return handle >= 0 && ::close(handle) == 0;
}

bool removeFile(const QByteArray &path)
{
    return ::unlink(path.constData()) == 0;
}

bool makeSecondName(const QString &existing, const QString &path)
{
    return ::link(QFile::encodeName(existing).constData(), QFile::encodeName(path).constData()) ==
           0;
}

QString endlessFile()
{
    return QStringLiteral("/dev/zero");
}

QString nullDevice()
{
    return QStringLiteral("/dev/null");
}

QString folderOnOtherFileSystem(const QString &path)
{
    for (const auto &folder : {QStringLiteral("/dev/shm"), QStringLiteral("/var/tmp")})
        if (deviceOf(folder) != deviceOf(path) &&
            ::access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0)
            return folder;
    return {};
}

bool isRunning(qint64 process)
{
    // The state follows the name, which stands in brackets and may hold anything.
    const auto line = contentOf(QStringLiteral("/proc/%1/stat").arg(process));
    const auto state = line.mid(line.lastIndexOf(')') + 2, 1);
    return !state.isEmpty() && state != "Z" && state != "X";
}

void kill(qint64 process)
{
    if (process > 1)
        ::kill(static_cast<pid_t>(process), SIGKILL);
}

void askToEnd(qint64 process)
{
    if (process > 1)
        ::kill(static_cast<pid_t>(process), SIGTERM);
}

void interrupt(qint64 process)
{
    if (process > 1)
        ::kill(static_cast<pid_t>(process), SIGINT);
}

qint64 groupOf(qint64 process)
{
    return ::getpgid(static_cast<pid_t>(process));
}

int modeOf(const QString &path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return -1;
    return static_cast<int>(status.st_mode & 07777);
}

int setFileMask(int mask)
{
    return static_cast<int>(::umask(static_cast<mode_t>(mask)));
}

bool isLocked(const QString &path, qint64 byte)
{
    const auto handle = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    if (handle < 0)
        return false;
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    const bool known = ::fcntl(handle, F_OFD_GETLK, &lock) == 0;
    ::close(handle);
    return known && lock.l_type != F_UNLCK;
}

int limitOpenFiles(int most)
{
    struct rlimit limit = {};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return -1;
    const auto before = static_cast<int>(limit.rlim_cur);
    limit.rlim_cur = static_cast<rlim_t>(most);
    return ::setrlimit(RLIMIT_NOFILE, &limit) == 0 ? before : -1;
}

} // namespace SystemActions

OrdinaryUser::OrdinaryUser() : m_changed(::geteuid() == 0)
{
    if (m_changed && ::setresuid(Nobody, Nobody, 0) != 0)
        qFatal("cannot give up the administrator's rights");
}

OrdinaryUser::~OrdinaryUser()
{
    if (!m_changed)
        return;
    if (::setresuid(0, 0, 0) != 0)
        qFatal("cannot take back the administrator's rights");
    // The change took away that a leak detector may look at this process.
    ::prctl(PR_SET_DUMPABLE, 1);
}

SmallDisk::SmallDisk(const QString &folder, int kilobytes)
    : m_folder(folder),
      m_mounted(::mount("quorlin-test", QFile::encodeName(folder).constData(), "tmpfs", 0,
                        QByteArray("size=" + QByteArray::number(kilobytes) + 'k').constData()) == 0)
{
}

SmallDisk::~SmallDisk()
{
    if (m_mounted && ::umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH) != 0)
        qWarning("a small disk stays mounted");
}

bool SmallDisk::makeReadOnly() const
{
    return ::mount(nullptr, QFile::encodeName(m_folder).constData(), nullptr,
                   MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

} // namespace Quorlin
