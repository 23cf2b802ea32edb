#include "settings/SystemRegistry.h"

#include "settings/LayeredRegistry.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace Quorlin::SystemRegistry {

namespace {

QString fileIn(const QString &folder)
{
    return QDir::cleanPath(folder) + QLatin1String("/quorlin/registry.db");
}

QString usualMachineFolder()
{
    return QStringLiteral("/etc/xdg");
}

QString userFolder()
{
    const auto folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QLatin1String("/.config");
}

/// In the order in which they count.
QStringList machineFolders()
{
    QStringList folders;
    for (const auto &folder : qEnvironmentVariable("XDG_CONFIG_DIRS").split(QLatin1Char(':')))
        if (folder.startsWith(QLatin1Char('/')))
            folders.append(QDir::cleanPath(folder));
    return folders.isEmpty() ? QStringList(usualMachineFolder()) : folders;
}

} // namespace

QString userFile()
{
    return fileIn(userFolder());
}

/// Sessions of some desktops put folders of their own in front of the usual one, which an
/// administrator's shell does not have.
QString machineFile()
{
    const auto folders = machineFolders();
    for (const auto &folder : folders)
        if (QFileInfo::exists(fileIn(folder)))
            return fileIn(folder);
    return fileIn(folders.contains(usualMachineFolder()) ? usualMachineFolder() : folders.first());
}

std::shared_ptr<RegistryStore> store()
{
    return std::make_shared<LayeredRegistry>(userFile(), machineFile());
}

} // namespace Quorlin::SystemRegistry
