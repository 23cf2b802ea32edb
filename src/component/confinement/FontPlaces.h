#pragma once

#include <QStringList>

namespace Quorlin::FontPlaces {

/// Files and folders that looking for a font reads: the fonts of the machine and of the user, the
/// settings that say where they are, and the caches. Asked of Fontconfig, once in a process.
[[nodiscard]] QStringList readable();

} // namespace Quorlin::FontPlaces
