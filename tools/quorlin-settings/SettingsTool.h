#pragma once

#include "quorlin-settings/InstalledValues.h"
#include "quorlin-settings/SettingsRequest.h"

#include "settings/Registry.h"
#include "settings/RegistryStore.h"

#include <functional>
#include <memory>

namespace Quorlin {

class Console;

/// What the tool works on.
struct SettingsScene
{
    std::shared_ptr<RegistryStore> store;
    /// The files behind it, for messages.
    QString userFile;
    QString machineFile;
    QString programFolder;
    /// Whether a window of this user is open, which will write its own settings.
    std::function<bool()> isWindowOpen;
};

/// Carries out one request on the settings.
class SettingsTool
{
public:
    enum ExitCode { Done = 0, Failed = 1, WrongUse = 2 };

    /// @param console must outlive the tool.
    SettingsTool(const SettingsScene &scene, Console &console);

    [[nodiscard]] ExitCode run(const SettingsRequest &request);

    /// Writes a line to standard error behind the program's name.
    static void complain(Console &console, const QString &text);

private:
    /// The value that counts, and where it comes from.
    struct Found
    {
        QString text;
        QString origin;
        QString remark;
    };

    ExitCode list(SettingsLayer layer);
    ExitCode get(const Setting &setting, SettingsLayer layer);
    ExitCode set(const SettingsRequest &request);
    ExitCode remove(const Setting &setting, SettingsLayer layer);
    ExitCode showValues(const Setting &setting, SettingsLayer layer);

    [[nodiscard]] Found find(const Setting &setting, SettingsLayer layer);
    [[nodiscard]] QString read(const Setting &setting, SettingsLayer layer);
    [[nodiscard]] RegistryKey key(SettingsLayer layer) const;
    [[nodiscard]] QString file(SettingsLayer layer) const;
    ExitCode failed(RegistryStatus status, SettingsLayer layer, const QString &verb);
    void warnOfWindow(SettingsLayer layer);

    SettingsScene m_scene;
    Console &m_console;
    InstalledValues m_installed;
    Registry m_registry;
    QStringList m_unreadable; ///< files that were complained about
};

} // namespace Quorlin
