#pragma once

#include <QString>

namespace Quorlin {

/// A path as people like to read it: relative when it lies below the current folder.
[[nodiscard]] QString shownPath(const QString &path);

} // namespace Quorlin
