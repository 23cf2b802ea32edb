#include "component/backends/office/EngineBoundaries.h"

#include <QFileInfo>

namespace Quorlin::EngineBoundaries {

Boundaries ofWorker(const EngineInstallation &installation, const QString &folder)
{
    auto boundaries = ofEngine(installation, folder);
    boundaries.startsPrograms = true;
    boundaries.connectsLocally = true;
    return boundaries;
}

Boundaries ofEngine(const EngineInstallation &installation, const QString &folder)
{
    auto boundaries = Boundaries::around(folder);
    // Programs, libraries and data of an installation lie beside each other.
    const auto root = QFileInfo(installation.programFolder).path();
    boundaries.readable << installation.programFolder;
    if (QFileInfo(root + QStringLiteral("/share")).isDir())
        boundaries.readable << root + QStringLiteral("/share");
    boundaries.runnable = {installation.program()};
    boundaries.ownSocketsOnly = true;
    return boundaries;
}

} // namespace Quorlin::EngineBoundaries
