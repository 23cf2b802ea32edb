#pragma once

#include <QString>

#include <chrono>

namespace Quorlin {

/// Which program is the component, and how long its process may take for what.
struct ComponentSettings
{
    /// Full path of the program; by default the one beside this program.
    QString program = programBeside();

    /// From its start to its greeting; a process that takes longer is given up.
    std::chrono::milliseconds greeting{30'000};

    /// From the end of its input to its own end; a process that takes longer is killed.
    std::chrono::milliseconds farewell{2'000};

    /// The path of `quorlin-pdf` in the folder of this program, symbolic links resolved.
    [[nodiscard]] static QString programBeside();
};

} // namespace Quorlin
