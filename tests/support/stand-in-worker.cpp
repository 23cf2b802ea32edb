#include "support/StandInWorker.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    const auto option = arguments.indexOf(QStringLiteral("--greeting"));
    return Quorlin::StandInWorker().run(option < 0 ? QString() : arguments.value(option + 1));
}
