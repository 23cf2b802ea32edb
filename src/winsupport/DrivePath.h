#pragma once

#include <QString>

namespace Quorlin {

/// Where a path of the form "c:\folder\file" lies on this system.
///
/// Drive C is the folder that the environment variable QUORLIN_DRIVE_C names by an absolute
/// path; nothing leads out of it by "..". Case counts behind the drive's letter.
/// @return empty when there is no such drive: for other letters and other forms, and as long as
/// the variable names no folder.
[[nodiscard]] QString drivePath(const QString &windowsPath);

} // namespace Quorlin
