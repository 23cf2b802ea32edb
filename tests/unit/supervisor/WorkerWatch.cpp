#include "unit/supervisor/WorkerWatch.h"

#include <QTest>

#include <utility>

namespace Quorlin {

namespace {

constexpr int Patience = 60000; ///< milliseconds

} // namespace

WorkerWatch::WorkerWatch(Worker &worker) : m_worker(worker)
{
    QObject::connect(&worker, &Worker::ready, &worker, [this] { ++readies; });
    QObject::connect(&worker, &Worker::ended, &worker,
                     [this](const WorkerAnswer &failure) { ends.append(failure); });
}

bool WorkerWatch::start()
{
    m_worker.start();
    (void)QTest::qWaitFor([this] { return readies > 0 || !ends.isEmpty(); }, Patience);
    return m_worker.isFree();
}

WorkerAnswer WorkerWatch::run(const QJsonObject &request, const QString &folder,
                              const Limits &limits)
{
    const auto before = answers.size();
    begin(request, folder, limits);
    (void)QTest::qWaitFor([&] { return answers.size() > before; }, Patience);
    return answers.size() > before
               ? answers.last()
               : WorkerAnswer{Reason::Cancelled, QStringLiteral("no answer came"), {}, false};
}

void WorkerWatch::begin(const QJsonObject &request, const QString &folder, const Limits &limits)
{
    WorkerTask task;
    task.request = [request](const QString &) { return request; };
    task.folder = folder;
    task.limits = limits;
    task.progressed = [this](int percent) { percents.append(percent); };
    task.finished = [this](const WorkerAnswer &answer) { answers.append(answer); };
    m_worker.run(std::move(task));
}

bool WorkerWatch::waitForAnswer()
{
    return QTest::qWaitFor([this] { return !answers.isEmpty(); }, Patience);
}

bool WorkerWatch::waitForEnd()
{
    return QTest::qWaitFor([this] { return !ends.isEmpty(); }, Patience);
}

} // namespace Quorlin
