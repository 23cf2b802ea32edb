#include "convert/ComponentProcess.h"

#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"
#include "winsupport/ChildGroup.h"

#include <QFileInfo>

namespace Quorlin {

namespace {

constexpr qsizetype MaxLogLine = 4096;

bool isType(const QJsonObject &message, const char *type)
{
    return message.value(QLatin1String("type")).toString() == QLatin1String(type);
}

} // namespace

ComponentProcess::ComponentProcess(const ComponentSettings &settings, QObject *parent)
    : QObject(parent), m_settings(settings), m_lines(Protocol::MaxLineBytes), m_logLines(MaxLogLine)
{
    m_greetingTimer.setSingleShot(true);
    m_killTimer.setSingleShot(true);
    m_process.setProgram(settings.program);
    ChildGroup::lead(m_process);
    connectProcess();
}

ComponentProcess::~ComponentProcess()
{
    m_over = true;
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    if (m_process.waitForFinished(static_cast<int>(m_settings.farewell.count())))
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void ComponentProcess::connectProcess()
{
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &ComponentProcess::readReports);
    connect(&m_process, &QProcess::readyReadStandardError, this, &ComponentProcess::readLog);
    connect(&m_process, &QProcess::readChannelFinished, this, &ComponentProcess::endSoon);
    connect(&m_process, &QProcess::errorOccurred, this, &ComponentProcess::onError);
    connect(&m_process, &QProcess::finished, this, &ComponentProcess::onFinished);
    connect(&m_killTimer, &QTimer::timeout, &m_process, &QProcess::kill);
    connect(&m_greetingTimer, &QTimer::timeout, this, [this] {
        lose(Reason::EngineFailed, QStringLiteral("the PDF component does not answer"));
    });
}

void ComponentProcess::start()
{
    m_greetingTimer.start(m_settings.greeting);
    m_process.start();
}

void ComponentProcess::send(const QByteArray &line)
{
    if (m_over)
        return;
    if (m_greeted)
        m_process.write(line);
    else
        m_waiting.append(line);
}

void ComponentProcess::retire()
{
    m_over = true;
    m_greetingTimer.stop();
    if (m_process.state() == QProcess::NotRunning) {
        deleteLater();
        return;
    }
    connect(&m_process, &QProcess::finished, this, &QObject::deleteLater);
    endSoon();
}

void ComponentProcess::endSoon()
{
    m_process.closeWriteChannel();
    if (!m_killTimer.isActive())
        m_killTimer.start(m_settings.farewell);
}

void ComponentProcess::readReports()
{
    takeReports(m_process.readAllStandardOutput());
}

void ComponentProcess::takeReports(const QByteArray &bytes)
{
    m_lines.append(bytes);
    while (const auto line = m_lines.takeLine()) {
        if (m_over)
            return;
        take(*line);
    }
    if (m_lines.takeOverflow() && !m_over)
        Q_EMIT logged(QStringLiteral("a line from the component was too long and is ignored"));
}

void ComponentProcess::take(const QByteArray &line)
{
    const auto message = Message::decode(line);
    if (!message)
        Q_EMIT logged(QStringLiteral("not a message: ") + shown(line));
    else if (m_greeted)
        Q_EMIT reported(*message);
    else if (isType(*message, Protocol::Hello))
        greet(*message);
    else
        Q_EMIT logged(QStringLiteral("a message before the greeting: ") + shown(line));
}

void ComponentProcess::greet(const QJsonObject &hello)
{
    const auto version = hello.value(QLatin1String("protocol")).toInt(-1);
    if (version != Protocol::Version) {
        lose(Reason::EngineFailed,
             QStringLiteral("the PDF component speaks version %1 of the pipe's language, version "
                            "%2 is needed")
                 .arg(version)
                 .arg(Protocol::Version));
        return;
    }
    m_greetingTimer.stop();
    m_greeted = true;
    if (!m_waiting.isEmpty())
        m_process.write(m_waiting);
    m_waiting.clear();
    const auto notice = hello.value(QLatin1String("notice")).toString();
    if (!notice.isEmpty())
        Q_EMIT noticed(shown(notice.toUtf8()));
}

void ComponentProcess::readLog()
{
    m_logLines.append(m_process.readAllStandardError());
    while (const auto line = m_logLines.takeLine())
        takeLog(*line);
}

void ComponentProcess::takeLog(const QByteArray &line)
{
    if (m_over || line.trimmed().isEmpty())
        return;
    m_lastLog = shown(line);
    Q_EMIT logged(m_lastLog);
}

void ComponentProcess::onError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart)
        lose(Reason::ProgramMissing, QStringLiteral("the PDF component %1 cannot be started: %2")
                                         .arg(m_settings.program, m_process.errorString()));
    else if (error == QProcess::WriteError)
        endSoon();
}

void ComponentProcess::onFinished(int exitCode, QProcess::ExitStatus status)
{
    readReports();
    readLog();
    auto text = status == QProcess::CrashExit
                    ? QStringLiteral("the PDF component died")
                    : QStringLiteral("the PDF component ended with code %1").arg(exitCode);
    if (!m_lastLog.isEmpty())
        text += QStringLiteral(" (%1)").arg(m_lastLog);
    lose(Reason::EngineFailed, text);
}

void ComponentProcess::lose(Reason reason, const QString &text)
{
    if (m_over)
        return;
    m_over = true;
    m_greetingTimer.stop();
    Q_EMIT lost(reason, text);
}

QString ComponentProcess::shown(const QByteArray &line) const
{
    auto text = QString::fromUtf8(line.left(200));
    for (auto &character : text) {
        if (!character.isPrint())
            character = QLatin1Char('?');
    }
    return text;
}

} // namespace Quorlin
