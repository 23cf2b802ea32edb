#include "tool/Console.h"
#include "tool/ConvertTool.h"
#include "tool/FileNames.h"
#include "tool/OptionsReader.h"
#include "tool/Terminal.h"
#include "winsupport/Interruption.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cerrno>
#include <system_error>

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

/// The words of the command line, with names of any bytes kept apart.
QStringList wordsOf(int argc, char **argv)
{
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words.append(FileNames::fromBytes(argv[i]));
    return words;
}

int write(Console &console, const QString &text)
{
    if (console.writeOutput(text.toUtf8()))
        return ConvertTool::Done;
    console.complain(QStringLiteral("standard output cannot be written: %1")
                         .arg(QString::fromStdString(std::generic_category().message(errno))));
    return ConvertTool::SomeFailed;
}

} // namespace

int main(int argc, char **argv)
{
    Terminal::fillClosedStreams();
    const auto words = wordsOf(argc, argv);
    const QCoreApplication application(argc, argv);
    Console console;
    OptionsReader reader;
    const auto options = reader.read(words);
    if (!options) {
        console.complain(reader.error());
        console.note(QStringLiteral("Try \"quorlin-convert --help\"."));
        return ConvertTool::WrongUse;
    }
    if (options->action == Options::Action::Convert)
        return convert(*options, console);
    return write(console, options->action == Options::Action::Help
                              ? OptionsReader::help()
                              : QStringLiteral("quorlin-convert " QUORLIN_VERSION "\n"));
}
