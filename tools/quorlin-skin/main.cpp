#include "quorlin-skin/SkinShow.h"
#include "ui/NoDisplay.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>

#include <optional>

using namespace Quorlin;

namespace {

constexpr int Failed = 1;
constexpr int WrongUse = 2;
/// Between the two windows, in pixels.
constexpr int Gap = 24;

struct Request
{
    SkinShowOptions show;
    QString screenshot;
    bool isAbout = false;
};

const QCommandLineOption Language(QStringLiteral("language"),
                                  QStringLiteral("Texts in this language."), QStringLiteral("name"),
                                  QStringLiteral("english"));
const QCommandLineOption Folder(QStringLiteral("folder"),
                                QStringLiteral("Folder with \"skins\" and \"language\"; the "
                                               "program's own by default."),
                                QStringLiteral("path"));
const QCommandLineOption Working(QStringLiteral("working"),
                                 QStringLiteral("As in the middle of a conversion."));
const QCommandLineOption Empty(QStringLiteral("empty"), QStringLiteral("Without documents."));
const QCommandLineOption About(QStringLiteral("about"),
                               QStringLiteral("The about box alone; otherwise both windows, or "
                                              "the main window's screenshot."));
const QCommandLineOption Screenshot(QStringLiteral("screenshot"),
                                    QStringLiteral("Save a picture and end."),
                                    QStringLiteral("file"));

Request read(const QCommandLineParser &parser)
{
    Request request;
    request.show.skin = parser.positionalArguments().value(0, QStringLiteral("Varnex"));
    request.show.language = parser.value(Language);
    request.show.applicationFolder =
        parser.isSet(Folder) ? parser.value(Folder) : QCoreApplication::applicationDirPath();
    request.show.isWorking = parser.isSet(Working);
    request.show.isEmpty = parser.isSet(Empty);
    request.screenshot = parser.value(Screenshot);
    request.isAbout = parser.isSet(About);
    return request;
}

int complain(const QString &text, int exitCode)
{
    QTextStream(stderr) << text << '\n';
    return exitCode;
}

/// Everything has its final place and look once the window was shown.
bool save(QWidget &window, const QString &file)
{
    window.show();
    QCoreApplication::processEvents();
    return window.grab().save(file);
}

int run(const Request &request)
{
    SkinShow show(request.show);
    if (!show.isComplete())
        return Failed;
    QWidget &about = show.aboutBox();
    QWidget &main = show.mainWindow();
    if (!request.screenshot.isEmpty()) {
        return save(request.isAbout ? about : main, request.screenshot)
                   ? 0
                   : complain(QStringLiteral("%1 cannot be written").arg(request.screenshot),
                              Failed);
    }
    if (!request.isAbout)
        main.show();
    about.move(main.geometry().topRight() + QPoint(Gap, 0));
    about.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    std::optional<NoDisplay> noDisplay(std::in_place);
    QApplication application(argc, argv);
    noDisplay.reset();
    QCoreApplication::setApplicationName(QStringLiteral("quorlin-skin"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUORLIN_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows how a skin looks, with sample texts."));
    parser.addPositionalArgument(QStringLiteral("skin"), QStringLiteral("Its folder's name."),
                                 QStringLiteral("[skin]"));
    parser.addOptions({Language, Folder, Working, Empty, About, Screenshot});
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
    if (parser.positionalArguments().size() > 1)
        return complain(QStringLiteral("one skin at a time"), WrongUse);
    return run(read(parser));
}
