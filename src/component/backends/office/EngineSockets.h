#pragma once

#include <QtGlobal>

namespace Quorlin::EngineSockets {

/// Takes the names of a process's listening sockets out of the file system. The engine puts
/// them where everybody's temporary files lie; once we are connected nobody needs them, and so
/// nothing is left behind however the engine ends.
void removeNames(qint64 processId);

} // namespace Quorlin::EngineSockets
