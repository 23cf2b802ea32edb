#pragma once

#include <QString>

#include <functional>

namespace Quorlin {

/// Creating files without ever touching one that is there already.
namespace ExclusiveFile {

enum class Result { Done, Exists, NoRoom, NotAllowed, Failed };

/// Which file this is, whatever its name and content: device, number and time of birth. Empty
/// when there is no such file. A link is not followed.
[[nodiscard]] QString identityOf(const QString &path);

/// As identityOf(), with size and time of the last change: equal texts mean equal content.
[[nodiscard]] QString versionOf(const QString &path);

/// Makes the file at `from` appear at `to` too, by a second name where the file system can,
/// otherwise by a copy. Fails with Exists when anything is at `to`, links included; a copy
/// that fails leaves nothing behind.
/// @param created called once `to` exists and before any byte is copied into it.
[[nodiscard]] Result publish(const QString &from, const QString &to,
                             const std::function<void()> &created);

/// Copies a regular file to a new one; links at `from` are followed. Never waits on a device
/// or a pipe. A copy that fails leaves nothing behind.
[[nodiscard]] Result copy(const QString &from, const QString &to);

} // namespace ExclusiveFile

} // namespace Quorlin
