#pragma once

#include "component/confinement/Confinement.h"
#include "component/protocol/Reason.h"
#include "component/supervisor/Watchdog.h"

#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QString>

#include <functional>
#include <memory>

namespace Quorlin {

/// What became of one piece of work.
struct WorkerAnswer
{
    Reason reason = Reason::None; ///< None: done
    QString text;                 ///< for people; empty means the reason's own text
    QJsonObject values;           ///< what the worker answered
    bool workerLost = false;      ///< the worker died of it or had to be killed
    QString folder;               ///< where the worker had the work's folder
};

/// One piece of work for a worker.
struct WorkerTask
{
    /// What the worker is asked, with paths in the folder where it finds the work's files.
    std::function<QJsonObject(const QString &folder)> request;
    QString folder; ///< the work's files are here; their growth is progress
    QString key;    ///< a worker serves tasks of one key only
    int after = 0;  ///< wants a worker that was started later than this generation
    Limits limits;
    std::function<void(int percent)> progressed;
    std::function<void(const WorkerAnswer &)> finished;
};

/// A process that does one piece of work at a time and is watched while it does.
///
/// Life: start() → ready() → run() → idle() → run() … → ended(). Every task is answered
/// exactly once, also when the process dies, hangs (then it is killed with its whole group) or
/// is ended. After ended() the object is of no use any more.
///
/// A worker that has a place of its own reaches nothing outside of it: the folder of a piece of
/// work is moved there while it works, and back before the answer.
class Worker : public QObject
{
    Q_OBJECT

public:
    explicit Worker(QObject *parent = nullptr);
    ~Worker() override;

    /// Starts the process. Either ready() or ended() follows.
    void start();

    /// Gives it work; only while it is free.
    void run(WorkerTask task);

    /// Kills the process with its group; a running task is answered Cancelled.
    void end();

    [[nodiscard]] bool isFree() const { return m_state == State::Idle; }
    [[nodiscard]] bool isStarting() const { return m_state == State::Starting; }
    [[nodiscard]] bool isBusy() const { return m_state == State::Busy; }
    [[nodiscard]] bool wasReady() const { return m_wasReady; }
    [[nodiscard]] int tasksDone() const { return m_tasksDone; }
    [[nodiscard]] const QString &key() const { return m_key; }
    void setKey(const QString &key) { m_key = key; }
    /// Counts the workers of a pool in the order of their start, from 1.
    [[nodiscard]] int generation() const { return m_generation; }
    void setGeneration(int generation) { m_generation = generation; }
    /// A folder that is this worker's alone; it is removed with the worker. Before start(), which
    /// fails without it unless the process is started for one task.
    void setPlace(const QString &folder) { m_place = folder; }
    /// How long it may take until it is ready, in milliseconds; Limits::startMs unless set.
    void setStartLimit(int milliseconds) { m_startLimitMs = milliseconds; }

Q_SIGNALS:
    void ready();
    void idle();
    /// The process is gone. When it never was ready, the answer tells why.
    void ended(const Quorlin::WorkerAnswer &startFailure);

protected:
    /// Sets program, arguments and environment of the process.
    virtual void prepare(QProcess &process) = 0;
    /// What confines the process from its first moment; null for one that confines itself before
    /// it opens anything.
    [[nodiscard]] virtual std::shared_ptr<const Confinement> confinement() const { return {}; }
    /// Called once the process runs; workers without a greeting call becomeReady() here.
    virtual void started() {}
    /// True for a process that serves one task: it is started when the task comes.
    [[nodiscard]] virtual bool startsWithTask() const { return false; }
    /// Gives the process the running task.
    virtual void begin() = 0;
    virtual void read(const QByteArray &bytes) = 0;
    /// The process exited while it worked; returns the answer for its task.
    virtual WorkerAnswer exited(int exitCode, QProcess::ExitStatus status);
    /// The name under which people install the program, for the message that it is missing.
    [[nodiscard]] virtual QString programName() const = 0;

    void becomeReady();
    void reportProgress(int percent);
    void answer(WorkerAnswer answer);
    void refuseStart(WorkerAnswer answer);
    void write(const QByteArray &bytes);
    /// The request of the running task.
    [[nodiscard]] const QJsonObject &request() const { return m_request; }
    /// Where the files of the running task are now.
    [[nodiscard]] const QString &folder() const { return m_folder; }
    [[nodiscard]] const QString &place() const { return m_place; }

private:
    enum class State { New, Starting, Idle, Busy, Ended };

    void launch();
    void kill();
    void processFailed(QProcess::ProcessError error);
    void processFinished(int exitCode, QProcess::ExitStatus status);
    void stopFor(Reason reason, const QString &text);
    void finishTask(WorkerAnswer answer);
    bool takeIn();
    void giveBack();
    void becomeEnded();

    QProcess m_process;
    Watchdog m_watchdog;
    WorkerTask m_task;
    WorkerAnswer m_startFailure;
    State m_state = State::New;
    QString m_key;
    QString m_place;
    QString m_folder;
    QJsonObject m_request;
    qint64 m_group = 0;
    int m_tasksDone = 0;
    int m_generation = 0;
    int m_startLimitMs = Limits{}.startMs;
    bool m_wasReady = false;
};

} // namespace Quorlin

Q_DECLARE_METATYPE(Quorlin::WorkerAnswer)
