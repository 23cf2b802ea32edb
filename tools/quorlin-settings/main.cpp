#include "quorlin-settings/SettingsTool.h"

#include "app/InstanceChannel.h"
#include "settings/SystemRegistry.h"
#include "tool/Console.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Quorlin;

namespace {

SettingsScene sceneOfSystem()
{
    return {SystemRegistry::store(), SystemRegistry::userFile(), SystemRegistry::machineFile(),
            QFileInfo(QCoreApplication::applicationFilePath()).canonicalPath(),
            [] { return InstanceChannel().isServerThere(); }};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Console console;
    QString error;
    const auto request = SettingsRequest::read(QCoreApplication::arguments().mid(1), error);
    if (!request) {
        SettingsTool::complain(console, error);
        console.note(QStringLiteral("Try \"quorlin-settings --help\"."));
        return SettingsTool::WrongUse;
    }
    const auto exitCode = SettingsTool(sceneOfSystem(), console).run(*request);
    if (console.lostOutput().isEmpty())
        return exitCode;
    SettingsTool::complain(console, QStringLiteral("standard output cannot be written: ") +
                                        console.lostOutput());
    return SettingsTool::Failed;
}
