#pragma once

#include <QString>
#include <QStringList>

#include <span>

namespace Quorlin {

/// Where a value is kept: for one user, or for all users of the machine.
enum class SettingsLayer { User, Machine };

/// One of the values that the window remembers.
struct Setting
{
    enum class Kind { Language, Quality, Skin, Switch, Position };

    QLatin1StringView name;
    Kind kind;
    QLatin1StringView builtIn; ///< what counts when nobody has set it; may be empty
    bool isForMachine;         ///< whether the window looks for it in the machine's values too

    [[nodiscard]] static std::span<const Setting> all();
    /// By its name, in any case; null when there is none.
    [[nodiscard]] static const Setting *find(const QString &name);
    [[nodiscard]] static QStringList names();
    /// Those that the window looks for in the machine's values.
    [[nodiscard]] static QStringList machineNames();
};

} // namespace Quorlin
