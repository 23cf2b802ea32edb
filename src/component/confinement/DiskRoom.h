#pragma once

#include <QString>

namespace Quorlin::DiskRoom {

/// Whether less than so many bytes are free on the disk of a folder. A disk of which the system
/// tells nothing is not taken for full. Works inside of a sandbox, which hides the list of disks.
[[nodiscard]] bool isShort(const QString &folder, qint64 bytes);

} // namespace Quorlin::DiskRoom
