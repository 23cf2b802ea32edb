#pragma once

#include <QString>

#include <optional>

namespace Quorlin {

/// The office engine as it is installed on this machine.
struct EngineInstallation
{
    QString programFolder; ///< absolute, all links resolved; holds soffice.bin
    QString buildId;       ///< what the engine compares a profile's age with; may be empty

    /// Looks for the engine behind the `soffice` of PATH.
    /// @return nothing when there is none, or when it is not laid out as expected.
    [[nodiscard]] static std::optional<EngineInstallation> find();

    /// The engine itself, without the launcher before it.
    [[nodiscard]] QString program() const;

    /// Value of URE_BOOTSTRAP with which another process can speak to the engine.
    [[nodiscard]] QString bootstrap() const;
};

} // namespace Quorlin
