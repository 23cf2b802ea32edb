#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin::SystemPlaces {

/// Files and folders of the machine that any program needs to run: libraries, shared data, the
/// few settings that libraries read. Nothing that belongs to a user.
[[nodiscard]] QStringList readable();

/// The file that the system loads dynamically linked programs with; empty when this program is
/// none.
[[nodiscard]] QString programLoader();

/// Whether the system runs the file through another program, which its first line names.
[[nodiscard]] bool isScript(const QString &path);

/// Where a program that is a script finds the programs that it calls.
[[nodiscard]] QStringList programFolders();

} // namespace Quorlin::SystemPlaces
