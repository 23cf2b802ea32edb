#pragma once

#include "component/backends/office/Engine.h"
#include "component/backends/worker/WorkerLoop.h"

#include <QJsonObject>
#include <QString>

namespace Quorlin {

/// The office worker: one engine behind the worker's pipe.
class OfficeWorker
{
public:
    /// Starts the engine and serves until end-of-file or until the engine is gone.
    /// @param workFolder existing folder that nobody else uses.
    /// @return the exit code of the process, see WorkerLoop.
    [[nodiscard]] int run(const QString &workFolder);

private:
    [[nodiscard]] int serve(Engine &engine);
    [[nodiscard]] WorkerResult answer(Engine &engine, const QJsonObject &request);

    WorkerLoop m_loop;
};

} // namespace Quorlin
