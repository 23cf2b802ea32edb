#pragma once

#include "quorlin-settings/Setting.h"

#include <optional>

namespace Quorlin {

/// What the command line asks for.
struct SettingsRequest
{
    enum class Action { List, Get, Set, Remove, Values, Help, Version };

    Action action = Action::Help;
    SettingsLayer layer = SettingsLayer::User;
    const Setting *setting = nullptr; ///< null where the action needs none
    QString value;                    ///< what to set, not yet checked

    /// @param arguments without the program's name. @param error why there is no request.
    [[nodiscard]] static std::optional<SettingsRequest> read(const QStringList &arguments,
                                                             QString &error);

    /// The text of --help, with its last line feed.
    [[nodiscard]] static QString help();
};

} // namespace Quorlin
