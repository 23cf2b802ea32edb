#include "component/supervisor/Worker.h"

#include "component/supervisor/ProcessGroup.h"

#include <QTimer>

#include <utility>

namespace Quorlin {

Worker::Worker(QObject *parent) : QObject(parent)
{
    connect(&m_process, &QProcess::started, this, &Worker::started);
    connect(&m_process, &QProcess::errorOccurred, this, &Worker::processFailed);
    connect(&m_process, &QProcess::finished, this, &Worker::processFinished);
    connect(&m_process, &QProcess::readyReadStandardOutput, this,
            [this] { read(m_process.readAllStandardOutput()); });
    connect(&m_watchdog, &Watchdog::bit, this, &Worker::hung);
}

Worker::~Worker()
{
    m_process.disconnect(this);
    m_watchdog.disconnect(this);
    kill();
    // The kill cannot be refused; this only reaps the process.
    if (m_process.state() != QProcess::NotRunning)
        m_process.waitForFinished(2000);
}

void Worker::start()
{
    m_state = State::Starting;
    if (startsWithTask()) {
        QTimer::singleShot(0, this, &Worker::becomeReady);
        return;
    }
    m_startFailure = {
        Reason::EngineFailed, tr("%1 could not be started").arg(programName()), {}, true};
    m_watchdog.start({.stallMs = m_startLimitMs, .totalMs = m_startLimitMs}, {});
    launch();
}

void Worker::launch()
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    prepare(m_process);
    ProcessGroup::lead(m_process);
    m_process.start();
    m_group = m_process.processId();
}

/// A process that has only just been made leads no group yet.
void Worker::kill()
{
    ProcessGroup::kill(m_group);
    m_process.kill();
}

void Worker::run(WorkerTask task)
{
    Q_ASSERT(isFree());
    m_state = State::Busy;
    m_task = std::move(task);
    m_watchdog.start(m_task.limits, m_task.folder);
    if (startsWithTask())
        launch();
    else
        begin(m_task);
}

void Worker::end()
{
    if (m_state == State::Ended || m_state == State::New)
        return;
    kill();
    if (m_state == State::Busy)
        finishTask({Reason::Cancelled, {}, {}, true});
    becomeEnded();
}

void Worker::becomeReady()
{
    if (m_state != State::Starting)
        return;
    m_watchdog.stop();
    m_state = State::Idle;
    m_wasReady = true;
    Q_EMIT ready();
}

void Worker::reportProgress(int percent)
{
    if (m_state != State::Busy)
        return;
    m_watchdog.feed();
    if (m_task.progressed)
        m_task.progressed(percent);
}

void Worker::answer(WorkerAnswer answer)
{
    if (m_state != State::Busy)
        return;
    ++m_tasksDone;
    m_state = State::Idle;
    finishTask(std::move(answer));
    if (m_state == State::Idle)
        Q_EMIT idle();
}

void Worker::refuseStart(WorkerAnswer answer)
{
    m_startFailure = std::move(answer);
}

void Worker::write(const QByteArray &bytes)
{
    m_process.write(bytes);
}

WorkerAnswer Worker::exited(int, QProcess::ExitStatus)
{
    return {Reason::EngineFailed, {}, {}, true};
}

void Worker::processFailed(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart || m_state == State::Ended)
        return;
    m_group = 0;
    const WorkerAnswer missing{
        Reason::ProgramMissing, tr("%1 is not installed").arg(programName()), {}, true};
    if (m_state == State::Busy)
        finishTask(missing);
    m_startFailure = missing;
    becomeEnded();
}

void Worker::processFinished(int exitCode, QProcess::ExitStatus status)
{
    read(m_process.readAllStandardOutput());
    ProcessGroup::kill(m_group);
    if (m_state == State::Busy)
        finishTask(exited(exitCode, status));
    becomeEnded();
}

void Worker::hung()
{
    kill();
    if (m_state == State::Busy)
        finishTask({Reason::TookTooLong, {}, {}, true});
    else
        m_startFailure = {
            Reason::TookTooLong, tr("%1 took too long to start").arg(programName()), {}, true};
    becomeEnded();
}

void Worker::finishTask(WorkerAnswer answer)
{
    m_watchdog.stop();
    const auto finished = std::exchange(m_task.finished, nullptr);
    m_task.progressed = nullptr;
    if (finished)
        finished(answer);
}

void Worker::becomeEnded()
{
    if (m_state == State::Ended)
        return;
    m_watchdog.stop();
    m_state = State::Ended;
    Q_EMIT ended(m_startFailure);
}

} // namespace Quorlin
