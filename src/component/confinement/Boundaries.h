#pragma once

#include <QStringList>

namespace Quorlin {

/// What a program that opens documents may reach. The kernel refuses it everything else: other
/// files, the network, other processes, more privileges.
///
/// Paths are absolute; those that do not exist are passed over. A folder stands for everything
/// below it.
struct Boundaries
{
    QStringList readable;         ///< files and folders
    QStringList writable;         ///< folders that are read and written
    QStringList runnable;         ///< programs
    bool startsPrograms = false;  ///< may make processes, which have the same boundaries or less
    bool connectsLocally = false; ///< may connect to sockets that have a name in the file system
    /// Programs that choose the place of their sockets by asking whether the system's folder for
    /// temporary files may be written (access() with W_OK alone) hear that it may not.
    bool ownSocketsOnly = false;

    /// A program that needs no more than the machine's libraries, data and fonts, and a folder.
    [[nodiscard]] static Boundaries around(const QString &folder);
};

} // namespace Quorlin
