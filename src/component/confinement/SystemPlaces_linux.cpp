#include "component/confinement/SystemPlaces.h"

#include <QFile>

#include <link.h>

namespace Quorlin::SystemPlaces {

namespace {

/// The first object is the program itself.
int readLoader(dl_phdr_info *program, size_t, void *result)
{
    for (int i = 0; i < program->dlpi_phnum; ++i) {
        const auto &header = program->dlpi_phdr[i];
        if (header.p_type == PT_INTERP)
            *static_cast<QString *>(result) = QString::fromLocal8Bit(
                // The address that the loader gave the segment.
                reinterpret_cast<const char *>(program->dlpi_addr + header.p_vaddr));
    }
    return 1;
}

} // namespace

QStringList readable()
{
    return {
        QStringLiteral("/usr/lib"),
        QStringLiteral("/usr/lib32"),
        QStringLiteral("/usr/lib64"),
        QStringLiteral("/usr/libexec"),
        QStringLiteral("/usr/local/lib"),
        QStringLiteral("/usr/share"),
        QStringLiteral("/usr/local/share"),
        QStringLiteral("/nix/store"),
        QStringLiteral("/gnu/store"),
        QStringLiteral("/lib"),
        QStringLiteral("/lib32"),
        QStringLiteral("/lib64"),
        QStringLiteral("/etc/ld.so.cache"),
        QStringLiteral("/etc/ld.so.preload"),
        QStringLiteral("/etc/nsswitch.conf"),
        QStringLiteral("/etc/passwd"),
        QStringLiteral("/etc/localtime"),
        QStringLiteral("/etc/timezone"),
        QStringLiteral("/etc/locale.alias"),
        QStringLiteral("/etc/papersize"),
        QStringLiteral("/etc/ghostscript"),
        QStringLiteral("/etc/libreoffice"),
        QStringLiteral("/var/lib/ghostscript"),
        QStringLiteral("/var/lib/libreoffice"),
        QStringLiteral("/dev/null"),
        QStringLiteral("/dev/zero"),
        QStringLiteral("/dev/random"),
        QStringLiteral("/dev/urandom"),
        QStringLiteral("/proc/cpuinfo"),
        QStringLiteral("/proc/meminfo"),
        QStringLiteral("/proc/sys/kernel/osrelease"),
        QStringLiteral("/sys/devices/system/cpu"),
    };
}

QString programLoader()
{
    QString loader;
    ::dl_iterate_phdr(readLoader, &loader);
    return loader;
}

bool isScript(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(2) == "#!";
}

QStringList programFolders()
{
    return {QStringLiteral("/usr/bin"), QStringLiteral("/bin"), QStringLiteral("/usr/local/bin"),
            QStringLiteral("/usr/lib"), QStringLiteral("/lib")};
}

} // namespace Quorlin::SystemPlaces
