#pragma once

#include "component/protocol/LineBuffer.h"
#include "component/protocol/Reason.h"
#include "convert/ComponentSettings.h"

#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QTimer>

namespace Quorlin {

/// One process of the component, from its start to its end.
///
/// Checks the greeting, joins the pipe's pieces into lines and tells each message. After
/// lost() nothing more is told. All signals come from the event loop.
class ComponentProcess : public QObject
{
    Q_OBJECT

public:
    ComponentProcess(const ComponentSettings &settings, QObject *parent);

    /// Ends the process: closes its input, waits for at most the farewell time, then kills it.
    ~ComponentProcess() override;

    virtual void start();

    /// Writes one line; it is kept back until the process has greeted.
    virtual void send(const QByteArray &line);

    /// Lets go of the process: no more signals, its input is closed, it is killed when it has
    /// not ended within the farewell time, and the object deletes itself. Does not block.
    void retire();

Q_SIGNALS:
    void reported(const QJsonObject &message);

    /// The process cannot be used any more: it ended, could not be started, or speaks another
    /// language. Told at most once.
    void lost(Quorlin::Reason reason, const QString &text);

    /// Something that people should know of this component before they use it. At most once.
    void noticed(const QString &text);

    /// A line for developers: the process's standard error, and what was wrong on the pipe.
    void logged(const QString &line);

protected:
    /// Bytes of the process's standard output, in any pieces.
    void takeReports(const QByteArray &bytes);

private:
    void connectProcess();
    void readReports();
    void readLog();
    void takeLog(const QByteArray &line);
    void take(const QByteArray &line);
    void greet(const QJsonObject &hello);
    void onError(QProcess::ProcessError error);
    void onFinished(int exitCode, QProcess::ExitStatus status);
    void lose(Reason reason, const QString &text);
    void endSoon();
    [[nodiscard]] QString shown(const QByteArray &line) const;

    ComponentSettings m_settings;
    QProcess m_process;
    QTimer m_greetingTimer;
    QTimer m_killTimer;
    LineBuffer m_lines;
    LineBuffer m_logLines;
    QByteArray m_waiting; ///< lines for after the greeting
    QString m_lastLog;
    bool m_greeted = false;
    bool m_over = false; ///< lost or retired: nothing is told any more
};

} // namespace Quorlin
