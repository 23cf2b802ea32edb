#include "component/backends/merge/MergeRequest.h"
#include "component/backends/worker/WorkerLoop.h"

int main()
{
    Quorlin::WorkerLoop loop;
    const auto handler = [&loop](const QJsonObject &request) {
        Quorlin::MergeRequest job(request, [&loop](int percent) { loop.progress(percent); });
        const auto outcome = job.run();
        return Quorlin::WorkerResult{outcome.reason, outcome.text, outcome.values};
    };
    return loop.run({{QStringLiteral("worker"), QStringLiteral("quorlin-pdf-merge")},
                     {QStringLiteral("version"), QStringLiteral(QUORLIN_VERSION)}},
                    handler);
}
