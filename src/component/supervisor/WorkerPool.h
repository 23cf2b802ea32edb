#pragma once

#include "component/supervisor/Worker.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace Quorlin {

/// Workers of one kind and the work that waits for them, served in order of arrival.
///
/// Workers are started when there is work for them, kept warm afterwards, ended when they have
/// been idle for a while, and replaced after a number of tasks or a failure that cost them
/// their process. When a worker cannot be started at all, the task that waits first fails with
/// the reason; the next one is a new try.
class WorkerPool : public QObject
{
    Q_OBJECT

public:
    struct Settings
    {
        int maxWorkers = 1;
        int tasksPerWorker = 100; ///< a worker is replaced after so many
        int idleMs = 180'000;     ///< an idle worker is ended after so long
        int waitingPerWorker = 1; ///< so many waiting tasks justify one more worker
    };
    using Factory = std::function<std::unique_ptr<Worker>(const WorkerTask &task)>;

    WorkerPool(const Settings &settings, Factory factory, QObject *parent = nullptr);
    ~WorkerPool() override;

    /// Its answer comes later, never before this returns.
    void submit(WorkerTask task);

    /// Other numbers from now on; workers over the new limit stay until they are idle for long.
    void resize(int maxWorkers, int waitingPerWorker);

    /// Starts one worker now if there is none.
    void warm();

    /// Answers all work with Cancelled and ends all workers.
    void shutDown();

    /// The number of the worker started last; see WorkerTask::after.
    [[nodiscard]] int generation() const { return m_generation; }
    [[nodiscard]] int workerCount() const { return static_cast<int>(m_workers.size()); }

private:
    void schedule();
    void scheduleSoon();
    bool assign();
    void startWorkers();
    bool makeRoomFor(const WorkerTask &task);
    void startWorkerFor(const WorkerTask &task);
    void lost(Worker *worker, const WorkerAnswer &startFailure);
    [[nodiscard]] std::vector<WorkerTask> takeWaiting(const QString &key, bool all);
    void retire(Worker *worker);
    void endIdle();
    [[nodiscard]] bool serves(const Worker &worker, const WorkerTask &task) const;

    Settings m_settings;
    Factory m_factory;
    std::deque<WorkerTask> m_waiting;
    std::vector<std::unique_ptr<Worker>> m_workers;
    int m_generation = 0;
    QTimer m_scheduleTimer;
    QTimer m_idleTimer;
};

} // namespace Quorlin
