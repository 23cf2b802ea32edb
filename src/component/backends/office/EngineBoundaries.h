#pragma once

#include "component/backends/office/EngineInstallation.h"
#include "component/confinement/Boundaries.h"

#include <QString>

namespace Quorlin::EngineBoundaries {

/// Of the worker, which starts the engine and connects to it.
/// @param folder its own, in which the engine keeps its profile, its sockets and the documents.
[[nodiscard]] Boundaries ofWorker(const EngineInstallation &installation, const QString &folder);

/// Of the engine: it starts nothing and connects to nobody.
[[nodiscard]] Boundaries ofEngine(const EngineInstallation &installation, const QString &folder);

} // namespace Quorlin::EngineBoundaries
