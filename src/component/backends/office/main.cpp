#include "component/backends/office/OfficeWorker.h"

#include <QCommandLineParser>
#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption work(QStringLiteral("work"),
                                  QStringLiteral("Existing folder for the engine's files."),
                                  QStringLiteral("folder"));
    parser.addOption(work);
    parser.process(application);
    return Quorlin::OfficeWorker().run(parser.value(work));
}
