#pragma once

#include <QString>

namespace Quorlin {

/// What a store needs of the file system beyond Qt. Paths are absolute.
namespace StoreFiles {

/// Who may read what is made. Only the owner ever writes.
enum class Audience { Owner, Everyone };

enum class Kind {
    Missing,
    File,
    Other, ///< a folder, a pipe, a device, a link that leads nowhere
};

/// What a path leads to, links followed. Never opens anything.
[[nodiscard]] Kind kindOf(const QString &path);

/// Makes a folder and those above it, on the disk when this returns.
/// @return also true when it is there already.
[[nodiscard]] bool makeFolder(const QString &path, Audience audience);

/// Makes an empty file with the audience's permissions, whatever the process's own mask is.
/// @return also true when a file is there already; it is left as it is.
[[nodiscard]] bool makeFile(const QString &path, Audience audience);

/// Gives a file another name in the same folder, on the disk when this returns. A file that has
/// that name is never replaced.
[[nodiscard]] bool rename(const QString &from, const QString &to);

} // namespace StoreFiles

} // namespace Quorlin
