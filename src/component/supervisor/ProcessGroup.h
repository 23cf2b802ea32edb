#pragma once

#include <QtGlobal>

class QProcess;

namespace Quorlin::ProcessGroup {

/// Makes the process, when it is started, the leader of a group of its own that dies with the
/// process that started it, however that ends. Call before QProcess::start().
void lead(QProcess &process);

/// Ends every process of the group at once. Does nothing for a group that is gone.
void kill(qint64 leader);

} // namespace Quorlin::ProcessGroup
