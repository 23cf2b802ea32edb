#pragma once

#include <QString>

namespace Quorlin::FolderRemoval {

/// Removes a folder with everything in it, however deep it is and whatever may not be entered:
/// what a hostile program made must go, too. Links are not followed.
/// @return false when something is left.
bool remove(const QString &path);

} // namespace Quorlin::FolderRemoval
