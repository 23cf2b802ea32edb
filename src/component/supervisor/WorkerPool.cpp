#include "component/supervisor/WorkerPool.h"

#include <algorithm>
#include <utility>

namespace Quorlin {

WorkerPool::WorkerPool(const Settings &settings, Factory factory, QObject *parent)
    : QObject(parent), m_settings(settings), m_factory(std::move(factory))
{
    m_scheduleTimer.setSingleShot(true);
    connect(&m_scheduleTimer, &QTimer::timeout, this, &WorkerPool::schedule);
    m_idleTimer.setSingleShot(true);
    m_idleTimer.setInterval(settings.idleMs);
    connect(&m_idleTimer, &QTimer::timeout, this, &WorkerPool::endIdle);
}

WorkerPool::~WorkerPool()
{
    for (const auto &worker : m_workers)
        worker->disconnect(this);
}

void WorkerPool::submit(WorkerTask task)
{
    m_waiting.push_back(std::move(task));
    scheduleSoon();
}

void WorkerPool::resize(int maxWorkers, int waitingPerWorker)
{
    m_settings.maxWorkers = maxWorkers;
    m_settings.waitingPerWorker = waitingPerWorker;
    scheduleSoon();
}

void WorkerPool::warm()
{
    if (m_workers.empty())
        startWorkerFor({});
}

void WorkerPool::shutDown()
{
    for (const auto &task : std::exchange(m_waiting, {}))
        task.finished({Reason::Cancelled, {}, {}, false});
    for (const auto &worker : m_workers)
        worker->disconnect(this);
    for (const auto &worker : m_workers)
        worker->end();
    m_workers.clear();
}

void WorkerPool::scheduleSoon()
{
    m_scheduleTimer.start(0);
}

void WorkerPool::schedule()
{
    while (assign()) {
    }
    startWorkers();
    const bool working = std::ranges::any_of(m_workers, [](const auto &w) { return !w->isFree(); });
    if (!working && !m_workers.empty())
        m_idleTimer.start();
    else
        m_idleTimer.stop();
}

bool WorkerPool::serves(const Worker &worker, const WorkerTask &task) const
{
    return worker.key() == task.key && worker.generation() > task.after;
}

/// Gives one waiting task to one free worker. A task may overtake others that need a
/// different worker.
bool WorkerPool::assign()
{
    for (auto task = m_waiting.begin(); task != m_waiting.end(); ++task) {
        const auto worker = std::ranges::find_if(
            m_workers, [&](const auto &w) { return w->isFree() && serves(*w, *task); });
        if (worker == m_workers.end())
            continue;
        auto work = std::move(*task);
        m_waiting.erase(task);
        (*worker)->run(std::move(work));
        return true;
    }
    return false;
}

void WorkerPool::startWorkers()
{
    if (m_waiting.empty())
        return;
    const auto starting =
        std::ranges::count_if(m_workers, [](const auto &w) { return w->isStarting(); });
    const auto busy = std::ranges::count_if(m_workers, [](const auto &w) { return w->isBusy(); });
    // Each worker that is starting will take one of those that wait.
    const auto waiting = std::max<qsizetype>(0, std::ssize(m_waiting) - starting);
    const auto wanted = starting + busy == 0
                            ? qsizetype{1}
                            : starting + busy + waiting / m_settings.waitingPerWorker;
    for (auto have = starting + busy; have < wanted; ++have) {
        if (!makeRoomFor(m_waiting.front()))
            return;
        startWorkerFor(m_waiting.front());
        if (m_waiting.empty())
            return;
    }
}

/// Free workers that cannot serve the task give way to one that can.
bool WorkerPool::makeRoomFor(const WorkerTask &task)
{
    if (workerCount() < m_settings.maxWorkers)
        return true;
    const auto unfit = std::ranges::find_if(
        m_workers, [&](const auto &w) { return w->isFree() && !serves(*w, task); });
    if (unfit == m_workers.end())
        return false;
    retire(unfit->get());
    return true;
}

void WorkerPool::startWorkerFor(const WorkerTask &task)
{
    auto created = m_factory(task);
    auto *worker = created.get();
    worker->setKey(task.key);
    worker->setGeneration(++m_generation);
    worker->setStartLimit(std::min({Limits{}.startMs, task.limits.stallMs, task.limits.totalMs}));
    m_workers.push_back(std::move(created));
    connect(worker, &Worker::ready, this, &WorkerPool::scheduleSoon);
    connect(worker, &Worker::idle, this, [this, worker] {
        if (worker->tasksDone() >= m_settings.tasksPerWorker)
            retire(worker);
        scheduleSoon();
    });
    connect(worker, &Worker::ended, this,
            [this, worker](const WorkerAnswer &failure) { lost(worker, failure); });
    worker->start();
}

void WorkerPool::lost(Worker *worker, const WorkerAnswer &startFailure)
{
    const auto key = worker->key();
    const bool neverReady = worker->tasksDone() == 0 && !worker->wasReady();
    retire(worker);
    // A program that never answers would make each task wait for as long.
    const bool forAll = startFailure.reason == Reason::TookTooLong;
    if (neverReady)
        for (const auto &task : takeWaiting(key, forAll))
            task.finished(startFailure);
    scheduleSoon();
}

/// Takes the first waiting task of this key, or all of them.
std::vector<WorkerTask> WorkerPool::takeWaiting(const QString &key, bool all)
{
    std::vector<WorkerTask> taken;
    for (auto task = m_waiting.begin(); task != m_waiting.end() && (all || taken.empty());) {
        if (task->key == key) {
            taken.push_back(std::move(*task));
            task = m_waiting.erase(task);
        } else {
            ++task;
        }
    }
    return taken;
}

void WorkerPool::retire(Worker *worker)
{
    const auto at = std::ranges::find(m_workers, worker, &std::unique_ptr<Worker>::get);
    if (at == m_workers.end())
        return;
    worker->disconnect(this);
    auto *released = at->release();
    m_workers.erase(at);
    released->end();
    // It may be the sender of the signal that is being handled.
    released->deleteLater();
}

void WorkerPool::endIdle()
{
    std::vector<Worker *> idle;
    for (const auto &worker : m_workers)
        if (worker->isFree())
            idle.push_back(worker.get());
    std::ranges::for_each(idle, [this](auto *worker) { retire(worker); });
}

} // namespace Quorlin
