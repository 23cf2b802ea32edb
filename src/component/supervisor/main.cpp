#include "component/supervisor/Component.h"

#include "component/protocol/Message.h"
#include "component/supervisor/RequestReader.h"

#include <QCoreApplication>
#include <QFileInfo>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quorlin-pdf"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUORLIN_VERSION));

    Quorlin::RequestReader driver;
    const QFileInfo program(QCoreApplication::applicationFilePath());
    Quorlin::Component component(
        {QFileInfo(program.canonicalFilePath()).absolutePath(), Quorlin::Journal::defaultFolder()});
    QObject::connect(
        &component, &Quorlin::Component::send, &driver,
        [&driver](const auto &message) { driver.write(Quorlin::Message::encode(message)); });
    QObject::connect(&driver, &Quorlin::RequestReader::arrived, &component,
                     &Quorlin::Component::receive);
    QObject::connect(&driver, &Quorlin::RequestReader::ended, &application,
                     &QCoreApplication::quit);
    if (!component.prepare()) {
        qCritical("The folder for temporary files cannot be written.");
        return 1;
    }
    component.greet();
    const int code = QCoreApplication::exec();
    component.shutDown();
    return code;
}
