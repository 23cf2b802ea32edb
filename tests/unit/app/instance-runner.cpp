// Stands for an instance of the program in the tests.
//
// Usage: instance-runner FOLDER start [TEXT]   starts as the program does: with a text, hands it
//                                              to an earlier instance or becomes a server;
//                                              without, opens a window
//        instance-runner FOLDER parent TEXT    the same; a server starts another program, too
//        instance-runner FOLDER send TEXT      sends a text to the server, if there is one
// FOLDER is where instances meet. Prints a line for everything that happens; a window stays until
// the standard input ends.

#include "MarkedWindow.h"

#include "app/mdlMultipleInstanceDialog.h"

#include <QApplication>
#include <QProcess>
#include <QSocketNotifier>

#include <cstdio>

using namespace Quorlin;

namespace {

int say(const QString &line)
{
    std::puts(line.toUtf8().constData());
    return std::fflush(stdout);
}

void startChild()
{
    qint64 child = 0;
    if (QProcess::startDetached(QStringLiteral("sleep"), {QStringLiteral("60")}, {}, &child))
        say(QStringLiteral("child %1").arg(child));
}

int runWindow(int argc, char **argv, bool withChild)
{
    QApplication application(argc, argv);
    MarkedWindow window;
    window.whileReceiving = [&window] { say(QStringLiteral("got ") + window.texts.last()); };
    const QSocketNotifier end(0, QSocketNotifier::Read);
    QObject::connect(&end, &QSocketNotifier::activated, &window, &QApplication::quit);
    mdlMultipleInstanceDialog::pHook(&window);
    window.show();
    if (withChild)
        startChild();
    say(QStringLiteral("window"));
    const auto code = QApplication::exec();
    mdlMultipleInstanceDialog::pUnhook();
    return code;
}

int send(const QString &text)
{
    mdlMultipleInstanceDialog::SendData(text);
    return say(QStringLiteral("sent"));
}

bool mustSend()
{
    using Result = ServerSearch::Result;
    if (!mdlMultipleInstanceDialog::PrevInstance())
        return false;
    say(QStringLiteral("waiting"));
    return mdlMultipleInstanceDialog::WaitForServer() == Result::ServerFound;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3)
        return 2;
    mdlMultipleInstanceDialog::useFolder(QString::fromUtf8(argv[1]));
    const QByteArray mode(argv[2]);
    const auto text = argc > 3 ? QString::fromUtf8(argv[3]) : QString();
    if (mode == "send")
        return mdlMultipleInstanceDialog::GetServer() ? send(text) : say(QStringLiteral("nobody"));
    if (!text.isEmpty() && mustSend())
        return send(text);
    return runWindow(argc, argv, mode == "parent");
}
