#pragma once

#include <QtGlobal>

namespace Quorlin::ChildSetUp {

/// The number of this process, for begin() in its children.
[[nodiscard]] qint64 thisProcess();

/// What every child does first, between fork and exec: it dies with the process that started it,
/// however that ends, and gives the program no open file but the standard ones. Somebody else's
/// open files would be open to whatever the program opens, and no rule for files looks at them.
/// Ends the child when its parent is gone already. Async-signal-safe.
void begin(qint64 parent) noexcept;

} // namespace Quorlin::ChildSetUp
