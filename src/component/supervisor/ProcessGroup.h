#pragma once

#include "component/confinement/Confinement.h"
#include "component/confinement/ResourceLimits.h"

#include <QtGlobal>

#include <memory>

class QProcess;

namespace Quorlin::ProcessGroup {

/// What a group takes of the machine.
struct Usage
{
    int processes = 0;
    qint64 memoryBytes = 0;     ///< without what is only a file's
    qint64 cpuMilliseconds = 0; ///< of those that live now and their reaped children
};

/// Makes the process, when it is started, the leader of a group of its own that dies with the
/// process that started it, however that ends. Call before QProcess::start().
/// @param confinement entered before the program runs; may be null.
void lead(QProcess &process, const ResourceLimits &limits,
          const std::shared_ptr<const Confinement> &confinement);

/// Ends every process of the group at once. Does nothing for a group that is gone.
void kill(qint64 leader);

/// Looks through the processes of the machine; a group that is gone takes nothing.
[[nodiscard]] Usage usageOf(qint64 leader);

} // namespace Quorlin::ProcessGroup
