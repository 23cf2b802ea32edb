#include "settings/SystemRegistry.h"

#include "settings/LayeredRegistry.h"

#include <QDir>

namespace Quorlin::SystemRegistry {

namespace {

QString fileIn(const QString &folder)
{
    return QDir::cleanPath(folder) + QLatin1String("/quorlin/registry.db");
}

QString userFolder()
{
    const auto folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QLatin1String("/.config");
}

QString machineFolder()
{
    const auto folders = qEnvironmentVariable("XDG_CONFIG_DIRS").split(QLatin1Char(':'));
    for (const auto &folder : folders)
        if (folder.startsWith(QLatin1Char('/')))
            return folder;
    return QStringLiteral("/etc/xdg");
}

} // namespace

std::shared_ptr<RegistryStore> store()
{
    return std::make_shared<LayeredRegistry>(fileIn(userFolder()), fileIn(machineFolder()));
}

} // namespace Quorlin::SystemRegistry
