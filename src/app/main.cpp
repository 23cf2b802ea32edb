#include "app/ModMain.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("quorlin"));
    QApplication::setApplicationVersion(QStringLiteral(QUORLIN_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("quorlin"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/quorlin/quorlin.svg")));
    // The window says when the program ends: a message may come before the window does.
    QApplication::setQuitOnLastWindowClosed(false);
    return Quorlin::ModMain::Main(QApplication::arguments().mid(1));
}
