#include "InstanceScene.h"

#include "app/LocalSocket.h"

#include <QTest>

namespace Quorlin {

namespace {

constexpr int MostMilliseconds = 30000;

} // namespace

Runner::Runner(const QString &folder, const QStringList &arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(QUORLIN_INSTANCE_RUNNER), QStringList(folder) + arguments);
}

Runner::~Runner()
{
    kill();
}

QStringList Runner::lines()
{
    m_output += m_process.readAllStandardOutput();
    return QString::fromUtf8(m_output.left(m_output.lastIndexOf('\n') + 1))
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool Runner::says(const char *line)
{
    return QTest::qWaitFor([&] { return has(line); }, MostMilliseconds);
}

bool Runner::endsWell()
{
    return QTest::qWaitFor([this] { return !isRunning(); }, MostMilliseconds) &&
           m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

void Runner::kill()
{
    m_process.kill();
    m_process.waitForFinished(MostMilliseconds);
}

InstanceScene::InstanceScene() : m_opened(RuntimeFolder::at(folder())) {}

std::unique_ptr<Runner> InstanceScene::run(const char *mode, const QString &text) const
{
    QStringList arguments(QString::fromLatin1(mode));
    if (!text.isEmpty())
        arguments.append(text);
    return std::make_unique<Runner>(folder(), arguments);
}

QByteArray InstanceScene::socketPath() const
{
    return m_opened.pathOf("instance-" + RuntimeFolder::screenName() + ".socket");
}

QString InstanceScene::lockPath() const
{
    return folder() + QStringLiteral("/instance-%1.lock")
                          .arg(QString::fromLatin1(RuntimeFolder::screenName()));
}

Descriptor InstanceScene::connected() const
{
    return LocalSocket::connectTo(socketPath());
}

SenderThread::SenderThread(const QString &folder, const QString &text)
    : m_thread([this, folder, text] {
          m_result = InstanceChannel(folder).deliver(HandoffFrame::ofText(text)) ? 1 : 0;
      })
{
}

SenderThread::~SenderThread()
{
    m_thread.join();
}

} // namespace Quorlin
