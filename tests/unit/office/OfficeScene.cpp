#include "unit/office/OfficeScene.h"

#include "component/protocol/Message.h"

namespace Quorlin {

namespace {

constexpr int Patience = 60000; ///< milliseconds

QString workerProgram()
{
    return QStringLiteral(QUORLIN_BIN_DIR "/quorlin-pdf-office");
}

} // namespace

OfficeScene::OfficeScene() = default;

OfficeScene::~OfficeScene()
{
    m_worker.closeWriteChannel();
    if (!m_worker.waitForFinished(Patience))
        m_worker.kill();
}

QJsonObject OfficeScene::start(const QProcessEnvironment &environment)
{
    m_worker.setProcessEnvironment(environment);
    return launch(workerProgram(), {QStringLiteral("--work"), m_work.path()});
}

QJsonObject OfficeScene::startBelowAnother()
{
    // A shell gives a background process no input of its own accord.
    const auto script = QStringLiteral("exec 3<&0; \"$0\" --work \"$1\" <&3 3<&- & wait");
    return launch(QStringLiteral("sh"),
                  {QStringLiteral("-c"), script, workerProgram(), m_work.path()});
}

QJsonObject OfficeScene::launch(const QString &program, const QStringList &arguments)
{
    m_worker.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_worker.start(program, arguments);
    const auto greeting = read();
    m_engine = greeting.value(QLatin1String("engine")).toInteger();
    return greeting;
}

QJsonObject OfficeScene::exportFile(const QString &path, bool plain)
{
    m_progress.clear();
    sendExport(path, plain);
    return readAnswer();
}

void OfficeScene::send(const QJsonObject &request)
{
    m_worker.write(Message::encode(request));
}

void OfficeScene::sendExport(const QString &path, bool plain)
{
    send({{QStringLiteral("id"), ++m_id},
          {QStringLiteral("op"), QStringLiteral("export")},
          {QStringLiteral("input"), path},
          {QStringLiteral("output"), output()},
          {QStringLiteral("plain"), plain}});
}

QJsonObject OfficeScene::read()
{
    while (!m_worker.canReadLine() && m_worker.waitForReadyRead(Patience)) {
    }
    const auto message = Message::decode(m_worker.readLine()).value_or(QJsonObject());
    if (message.value(QLatin1String("event")).toString() == QLatin1String("progress"))
        m_progress.append(message.value(QLatin1String("percent")).toInt());
    return message;
}

QJsonObject OfficeScene::readAnswer()
{
    for (;;) {
        const auto seen = m_progress.size();
        const auto message = read();
        if (m_progress.size() == seen)
            return message;
    }
}

bool OfficeScene::waitForEnd()
{
    return m_worker.state() == QProcess::NotRunning || m_worker.waitForFinished(Patience);
}

} // namespace Quorlin
