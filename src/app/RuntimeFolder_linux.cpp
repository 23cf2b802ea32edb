#include "app/RuntimeFolder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin {

namespace {

constexpr mode_t OnlyOurs = 0700;
constexpr mode_t Permissions = 0777;
constexpr mode_t WrittenByOthers = 0022;
constexpr qsizetype HashCharacters = 16;

bool isOurs(const QString &folder)
{
    struct stat status = {};
    return QDir::isAbsolutePath(folder) &&
           ::stat(QFile::encodeName(folder).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & WrittenByOthers) == 0;
}

bool isOursAlone(const Descriptor &folder)
{
    struct stat status = {};
    return folder.isOpen() && ::fstat(folder.number(), &status) == 0 &&
           status.st_uid == ::geteuid() && (status.st_mode & Permissions) == OnlyOurs;
}

QByteArray screen()
{
    const auto wayland = qgetenv("WAYLAND_DISPLAY");
    if (wayland.startsWith('/'))
        return "wayland " + wayland;
    if (!wayland.isEmpty())
        return "wayland " + qgetenv("XDG_RUNTIME_DIR") + '/' + wayland;
    return "x11 " + qgetenv("DISPLAY");
}

} // namespace

RuntimeFolder RuntimeFolder::ofSession()
{
    return firstSafe(qEnvironmentVariable("XDG_RUNTIME_DIR"),
                     QStringLiteral("/tmp/quorlin-%1").arg(::geteuid()));
}

RuntimeFolder RuntimeFolder::firstSafe(const QString &runtime, const QString &fallback)
{
    if (isOurs(runtime)) {
        auto folder = at(runtime + QStringLiteral("/quorlin"));
        if (folder.isOpen())
            return folder;
    }
    return at(fallback);
}

RuntimeFolder RuntimeFolder::at(const QString &path)
{
    const auto name = QFile::encodeName(path);
    // Whether it was there already does not matter: what is there now is looked at.
    static_cast<void>(::mkdir(name.constData(), OnlyOurs));
    Descriptor folder(
        ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return RuntimeFolder(isOursAlone(folder) ? std::move(folder) : Descriptor(-1));
}

QByteArray RuntimeFolder::pathOf(const QByteArray &name) const
{
    return "/proc/self/fd/" + QByteArray::number(m_folder.number()) + '/' + name;
}

QByteArray RuntimeFolder::screenName()
{
    return QCryptographicHash::hash(screen(), QCryptographicHash::Sha1)
        .toHex()
        .left(HashCharacters);
}

} // namespace Quorlin
