#pragma once

#include "component/backends/office/Engine.h"
#include "component/backends/worker/WorkerLoop.h"
#include "component/backends/worker/WorkerStart.h"

#include <QJsonObject>

namespace Quorlin {

/// The office worker: one engine behind the worker's pipe.
class OfficeWorker
{
public:
    /// Confines itself to its folder, starts the engine in it, and serves until end-of-file or
    /// until the engine is gone.
    /// @return the exit code of the process, see WorkerLoop.
    [[nodiscard]] int run(const WorkerStart &start);

private:
    [[nodiscard]] int serve(Engine &engine);
    [[nodiscard]] WorkerResult answer(Engine &engine, const QJsonObject &request);

    WorkerLoop m_loop;
};

} // namespace Quorlin
