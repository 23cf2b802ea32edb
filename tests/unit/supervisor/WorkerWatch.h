#pragma once

#include "component/supervisor/Worker.h"

#include <QJsonObject>
#include <QList>

namespace Quorlin {

/// Gives a worker tasks and keeps what became of them.
class WorkerWatch
{
public:
    /// @param worker outlives this object.
    explicit WorkerWatch(Worker &worker);

    /// Starts the worker. @return true once it is ready, false once it has ended.
    [[nodiscard]] bool start();

    /// Does one task and waits for its answer.
    [[nodiscard]] WorkerAnswer run(const QJsonObject &request, const QString &folder = {},
                                   const Limits &limits = {});

    /// Gives it a task and goes on.
    void begin(const QJsonObject &request, const QString &folder = {}, const Limits &limits = {});

    /// Waits until the task's answer is there or the worker is gone.
    [[nodiscard]] bool waitForAnswer();
    [[nodiscard]] bool waitForEnd();

    QList<WorkerAnswer> answers;
    QList<int> percents;
    QList<WorkerAnswer> ends;
    int readies = 0;

private:
    Worker &m_worker;
};

} // namespace Quorlin
