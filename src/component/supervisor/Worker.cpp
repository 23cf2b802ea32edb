#include "component/supervisor/Worker.h"

#include "component/supervisor/FolderRemoval.h"
#include "component/supervisor/ProcessGroup.h"

#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <utility>

namespace Quorlin {

namespace {

constexpr qint64 MostFileBytes = qint64{4} << 30;

/// Far beyond what the watch allows: the kernel stops what is too quick for it.
ResourceLimits lastLimits()
{
    return {.memoryBytes = ResourceLimits::machineMemory() / 4 * 3, .fileBytes = MostFileBytes};
}

} // namespace

Worker::Worker(QObject *parent) : QObject(parent)
{
    connect(&m_process, &QProcess::started, this, &Worker::started);
    connect(&m_process, &QProcess::errorOccurred, this, &Worker::processFailed);
    connect(&m_process, &QProcess::finished, this, &Worker::processFinished);
    connect(&m_process, &QProcess::readyReadStandardOutput, this,
            [this] { read(m_process.readAllStandardOutput()); });
    connect(&m_watchdog, &Watchdog::bit, this, &Worker::stopFor);
}

Worker::~Worker()
{
    m_process.disconnect(this);
    m_watchdog.disconnect(this);
    kill();
    // The kill cannot be refused; this only reaps the process.
    if (m_process.state() != QProcess::NotRunning)
        m_process.waitForFinished(2000);
    if (!m_place.isEmpty())
        FolderRemoval::remove(m_place);
}

void Worker::start()
{
    m_state = State::Starting;
    if (startsWithTask()) {
        QTimer::singleShot(0, this, &Worker::becomeReady);
        return;
    }
    if (m_place.isEmpty()) {
        m_startFailure = {Reason::NoRoom, {}, {}, true};
        QTimer::singleShot(0, this, &Worker::becomeEnded);
        return;
    }
    m_startFailure = {
        Reason::EngineFailed, tr("%1 could not be started").arg(programName()), {}, true};
    m_watchdog.start({.stallMs = m_startLimitMs, .totalMs = m_startLimitMs}, {}, 0);
    launch();
}

void Worker::launch()
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    prepare(m_process);
    auto limits = lastLimits();
    if (startsWithTask())
        limits.cpuSeconds = m_task.limits.totalMs / 1000 + 1;
    ProcessGroup::lead(m_process, limits, confinement());
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
    if (!takeIn()) {
        // The answer must not come before this returns.
        QTimer::singleShot(0, this, [this] { answer({Reason::EngineFailed, {}, {}, true}); });
        return;
    }
    m_request = m_task.request ? m_task.request(m_folder) : QJsonObject();
    if (startsWithTask())
        launch();
    m_watchdog.start(m_task.limits, m_folder, m_group);
    if (!startsWithTask())
        begin();
}

/// Moves the folder of the work to where this worker reaches it.
bool Worker::takeIn()
{
    m_folder = m_task.folder;
    if (m_place.isEmpty() || m_task.folder.isEmpty() || m_task.folder == m_place)
        return true;
    const auto target = m_place + QLatin1Char('/') + QFileInfo(m_task.folder).fileName();
    if (!QDir().rename(m_task.folder, target))
        return false;
    m_folder = target;
    return true;
}

void Worker::giveBack()
{
    if (m_folder != m_task.folder && !QDir().rename(m_folder, m_task.folder))
        qWarning("%s cannot be taken back from a worker", qUtf8Printable(m_folder));
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
    const bool lost = answer.workerLost;
    ++m_tasksDone;
    m_state = State::Idle;
    finishTask(std::move(answer));
    if (m_state != State::Idle)
        return;
    if (lost)
        end();
    else
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
    // The number may be somebody else's from now on.
    m_group = 0;
    if (m_state == State::Busy)
        finishTask(exited(exitCode, status));
    becomeEnded();
}

void Worker::stopFor(Reason reason, const QString &text)
{
    kill();
    if (m_state == State::Busy)
        finishTask({reason, text, {}, true});
    else
        m_startFailure = {reason,
                          reason == Reason::TookTooLong
                              ? tr("%1 took too long to start").arg(programName())
                              : text,
                          {},
                          true};
    becomeEnded();
}

void Worker::finishTask(WorkerAnswer answer)
{
    m_watchdog.stop();
    giveBack();
    answer.folder = m_folder;
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
