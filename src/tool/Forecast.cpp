#include "tool/Forecast.h"

#include "component/protocol/ResultNames.h"

namespace Quorlin::Forecast {

namespace {

QList<DocumentRecord *> aliveOf(Report &report)
{
    QList<DocumentRecord *> alive;
    for (auto &document : report.documents) {
        if (!document.failed())
            alive.append(&document);
    }
    return alive;
}

void plan(DocumentRecord &document, const QString &target)
{
    const auto obstacle = Delivery::obstacleAt(target);
    document.reason = obstacle.reason;
    document.detail = obstacle.text;
    if (!document.failed())
        document.output = target;
}

} // namespace

void make(Report &report, const Options &options, Delivery &delivery)
{
    QStringList inputs;
    const auto documents = aliveOf(report);
    for (const auto *document : documents)
        inputs.append(document->input);
    const auto places = ResultNames(ResultNames::usersFolders()).places(inputs);
    for (qsizetype i = 0; i < documents.size(); ++i) {
        auto &document = *documents.at(i);
        if (places.at(i).folder.isEmpty()) {
            document.reason = Reason::NotAllowed;
            continue;
        }
        plan(document, options.merges() ? options.mergeTarget()
                                        : delivery.reserveName(places.at(i).result()));
        if (options.merges() && !document.failed())
            report.mergedFile = document.output;
    }
}

} // namespace Quorlin::Forecast
