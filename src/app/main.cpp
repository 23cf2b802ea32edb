#include "app/ModMain.h"
#include "ui/NoDisplay.h"

#include <QApplication>
#include <QIcon>

#include <optional>

int main(int argc, char **argv)
{
    std::optional<Quorlin::NoDisplay> noDisplay(std::in_place);
    QApplication application(argc, argv);
    noDisplay.reset();
    QApplication::setApplicationName(QStringLiteral("quorlin"));
    QApplication::setApplicationVersion(QStringLiteral(QUORLIN_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("quorlin"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/quorlin/quorlin.svg")));
    // The window says when the program ends: a message may come before the window does.
    QApplication::setQuitOnLastWindowClosed(false);
    return Quorlin::ModMain::Main(QApplication::arguments().mid(1));
}
