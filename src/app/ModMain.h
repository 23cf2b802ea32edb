#pragma once

#include <QStringList>

#include <functional>
#include <memory>

namespace Quorlin {

class IniFile;
class MessageService;
class Registry;

/// The program from its start to the end of its window.
namespace ModMain {

/// Makes what the settings are kept in; nothing when it cannot be had.
struct SettingsComponents
{
    std::function<std::unique_ptr<IniFile>()> makeIniFile;
    std::function<std::unique_ptr<Registry>()> makeRegistry;

    /// Those of this system.
    [[nodiscard]] static SettingsComponents ofSystem();
};

/// @return false when the program must end: the user has been told.
[[nodiscard]] bool CheckIniFileComponent(const SettingsComponents &components,
                                         MessageService &messages);
/// @return nothing when the program must end: the user has been told.
[[nodiscard]] std::unique_ptr<Registry> CheckRegistryComponent(const SettingsComponents &components,
                                                               MessageService &messages);
/// Whether the folder "Settings" and the file "Quorlin.ini" are in the program's folder; what
/// they hold does not count.
/// @return false when the program must end: the user has been told.
[[nodiscard]] bool CheckSettingsFiles(const QString &programFolder, MessageService &messages);

/// Checks the installation; hands the documents to an instance that runs already, or shows the
/// window and returns when the program is to end. There must be a QApplication.
/// @param arguments without the program's own name.
/// @return the program's exit code: 0, or 1 when it could not start.
[[nodiscard]] int Main(const QStringList &arguments);

} // namespace ModMain

} // namespace Quorlin
