#pragma once

#include <QByteArray>
#include <QString>

namespace Quorlin {

/// What a program inside of a sandbox may try. One source per system stands beside this header.
namespace ConfinedAction {

/// Tries it once.
/// @param name such as "read" or "connect-tcp". @param target path, port or process number.
/// @return "ok", or the system's name for the error, such as "EACCES".
[[nodiscard]] QByteArray attempt(const QByteArray &name, const QByteArray &target);

/// Makes the kernel deny this process, and all that it starts, that it has rules for files.
/// @return false when that failed.
[[nodiscard]] bool hideFileRules();

/// The same for filters of system calls.
[[nodiscard]] bool hideCallFilters();

/// Becomes another program; returns only when that failed.
void become(char **command);

} // namespace ConfinedAction

} // namespace Quorlin
