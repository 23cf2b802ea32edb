#include "component/backends/postscript/PdfPrinter.h"
#include "component/backends/worker/WorkerLoop.h"
#include "component/backends/worker/WorkerStart.h"

#include <QCoreApplication>
#include <QJsonArray>

using namespace Quorlin;

namespace {

AddressRebase readRebase(const QJsonArray &pairs)
{
    AddressRebase rebase;
    for (const auto &pair : pairs)
        rebase.emplace_back(pair.toArray().at(0).toString().toStdString(),
                            pair.toArray().at(1).toString().toStdString());
    return rebase;
}

PrintRequest readRequest(const QJsonObject &request)
{
    const auto text = [&](const char *key) { return request.value(QLatin1String(key)).toString(); };
    PrintRequest print;
    print.input = text("input");
    print.output = text("output");
    print.workFolder = text("work");
    print.printer = text("printer");
    print.title = text("title");
    print.rebase = readRebase(request.value(QLatin1String("rebase")).toArray());
    print.foreign = request.value(QLatin1String("foreign")).toBool(true);
    return print;
}

Boundaries boundariesIn(const QString &folder)
{
    auto boundaries = Boundaries::around(folder);
    boundaries.startsPrograms = true;
    boundaries.runnable = {PdfToPs::find()};
    return boundaries;
}

} // namespace

int main(int argc, char **argv)
{
    const WorkerStart start(argc, argv);
    const QCoreApplication application(argc, argv);
    WorkerLoop loop;
    if (const auto code = start.enter(loop, boundariesIn(start.folder())))
        return *code;
    const QJsonObject greeting{{QStringLiteral("worker"), QStringLiteral("quorlin-pdf-print")}};
    return loop.run(greeting, [&](const QJsonObject &request) -> WorkerResult {
        if (request.value(QLatin1String("op")).toString() != QLatin1String("print"))
            return {Reason::EngineFailed, QStringLiteral("Unknown request"), {}};
        const auto outcome =
            PdfPrinter().run(readRequest(request), [&](int percent) { loop.progress(percent); });
        return {outcome.reason, outcome.text, {{QStringLiteral("pages"), outcome.pages}}};
    });
}
