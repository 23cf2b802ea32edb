#include "tool/Console.h"
#include "tool/ConvertTool.h"
#include "tool/OptionsReader.h"
#include "winsupport/Interruption.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Quorlin;

namespace {

int convert(const Options &options, Console &console)
{
    Interruption interruption;
    ComponentSettings component;
    component.farewell = std::chrono::seconds(5);
    const auto folder = QFileInfo(QCoreApplication::applicationFilePath()).canonicalPath();
    ConvertTool tool(options, console, folder, component);
    QObject::connect(&tool, &ConvertTool::finished, &tool, &QCoreApplication::exit,
                     Qt::QueuedConnection);
    QObject::connect(&interruption, &Interruption::requested, &tool, &ConvertTool::interrupt);
    tool.start();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Console console;
    OptionsReader reader;
    const auto options = reader.read(QCoreApplication::arguments());
    if (!options) {
        console.complain(reader.error());
        console.note(QStringLiteral("Try \"quorlin-convert --help\"."));
        return ConvertTool::WrongUse;
    }
    if (options->action == Options::Action::Convert)
        return convert(*options, console);
    const auto text = options->action == Options::Action::Help
                          ? OptionsReader::help()
                          : QStringLiteral("quorlin-convert " QUORLIN_VERSION "\n");
    return console.writeOutput(text.toUtf8()) ? ConvertTool::Done : ConvertTool::SomeFailed;
}
