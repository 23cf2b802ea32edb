#include "component/supervisor/Component.h"

#include "component/protocol/Message.h"
#include "component/supervisor/RequestReader.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>
#include <string_view>

namespace {

constexpr char Version[] = "quorlin-pdf " QUORLIN_VERSION "\n";
constexpr char Help[] =
    "Usage: quorlin-pdf [--help | --version]\n"
    "\n"
    "The component of Quorlin that prints, distils and merges documents for other programs.\n"
    "It reads requests from its standard input and writes reports to its standard output, one\n"
    "JSON object a line, until its input ends. To convert documents, use quorlin-convert.\n";

/// What the only option asks for; null when there is none.
const char *answerTo(int argc, char *argv[])
{
    const std::string_view option = argc == 2 ? argv[1] : "";
    if (option == "--version")
        return Version;
    return option == "--help" || option == "-h" ? Help : nullptr;
}

bool print(const char *text)
{
    return std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0;
}

} // namespace

int main(int argc, char *argv[])
{
    if (const auto *const answer = answerTo(argc, argv))
        return print(answer) ? 0 : 1;

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
