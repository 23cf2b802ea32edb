#include "quorlin-settings/Setting.h"

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

using Kind = Setting::Kind;

constexpr std::array Settings{
    Setting{QLatin1StringView("Language"), Kind::Language, QLatin1StringView("english"), true},
    Setting{QLatin1StringView("Quality"), Kind::Quality, QLatin1StringView("0"), true},
    Setting{QLatin1StringView("Skin"), Kind::Skin, QLatin1StringView("Varnex"), true},
    Setting{QLatin1StringView("ShowOption"), Kind::Switch, QLatin1StringView("false"), false},
    Setting{QLatin1StringView("MergeOption"), Kind::Switch, QLatin1StringView("false"), false},
    Setting{QLatin1StringView("Position"), Kind::Position, QLatin1StringView(""), false},
};

} // namespace

std::span<const Setting> Setting::all()
{
    return Settings;
}

const Setting *Setting::find(const QString &name)
{
    const auto *const found = std::ranges::find_if(Settings, [&name](const Setting &setting) {
        return name.compare(setting.name, Qt::CaseInsensitive) == 0;
    });
    return found == Settings.end() ? nullptr : found;
}

QStringList Setting::names()
{
    QStringList names;
    for (const auto &setting : Settings)
        names.append(setting.name);
    return names;
}

QStringList Setting::machineNames()
{
    QStringList names;
    for (const auto &setting : Settings)
        if (setting.isForMachine)
            names.append(setting.name);
    return names;
}

} // namespace Quorlin
