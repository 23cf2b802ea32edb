#include "component/backends/merge/MergeRequest.h"
#include "component/backends/worker/WorkerLoop.h"
#include "component/backends/worker/WorkerStart.h"

int main(int argc, char *argv[])
{
    const Quorlin::WorkerStart start(argc, argv);
    Quorlin::WorkerLoop loop;
    if (const auto code = start.enter(loop, Quorlin::Boundaries::around(start.folder())))
        return *code;
    const auto handler = [&loop](const QJsonObject &request) {
        Quorlin::MergeRequest job(request, [&loop](int percent) { loop.progress(percent); });
        const auto outcome = job.run();
        return Quorlin::WorkerResult{outcome.reason, outcome.text, outcome.values};
    };
    return loop.run({{QStringLiteral("worker"), QStringLiteral("quorlin-pdf-merge")},
                     {QStringLiteral("version"), QStringLiteral(QUORLIN_VERSION)}},
                    handler);
}
