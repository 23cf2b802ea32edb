#pragma once

#include <QtGlobal>

namespace Quorlin {

class clsKelCopyFile;

/// The copies that run in this process, and the one routine that the system's copy calls for
/// them. Belongs to the thread of the windows.
namespace mdlKelCopyFile {

/// Notes that the object runs a copy. @return the copy's number; they start from 1 again
/// whenever no copy runs.
[[nodiscard]] qint32 add(clsKelCopyFile &object);
void remove(qint32 number);

/// Handles pending events and hands the progress on to the object of the copy, unless it has
/// gone meanwhile.
/// @return 0, go on: a copy is stopped by its cancel flag.
[[nodiscard]] quint32 CopyProgressRoutine(qint64 total, qint64 copied, qint32 number);

/// Percent rounded to the nearest, halves to even. @param total above 0.
[[nodiscard]] qint16 percentOf(qint64 total, qint64 copied);

} // namespace mdlKelCopyFile

} // namespace Quorlin
