#pragma once

#include <QtGlobal>

namespace Quorlin::EngineSockets {

/// Takes the names of a process's listening sockets out of the file system. Without a sandbox the
/// engine puts them where everybody's temporary files lie; once we are connected nobody needs them,
/// and so nothing is left behind however the engine ends. In a sandbox they lie in the engine's
/// own folder, and this finds none.
void removeNames(qint64 processId);

} // namespace Quorlin::EngineSockets
