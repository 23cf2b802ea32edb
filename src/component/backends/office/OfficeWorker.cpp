#include "component/backends/office/OfficeWorker.h"

#include "component/backends/office/DocumentExport.h"
#include "component/backends/office/EngineBoundaries.h"
#include "component/backends/office/EngineMainThread.h"
#include "component/backends/office/UnoValues.h"
#include "component/confinement/Confinement.h"

#include <QDir>

#include <com/sun/star/lang/DisposedException.hpp>

namespace Quorlin {

namespace {

WorkerResult engineGone(Engine &engine)
{
    if (engine.ranOutOfMemory())
        return {Reason::OutOfMemory, {}, {}, true};
    return {Reason::EngineFailed, QStringLiteral("the office engine ended"), {}, true};
}

} // namespace

int OfficeWorker::run(const WorkerStart &start)
{
    const auto installation = EngineInstallation::find();
    const auto boundaries = installation ? EngineBoundaries::ofWorker(*installation, start.folder())
                                         : Boundaries::around(start.folder());
    if (const auto code = start.enter(m_loop, boundaries))
        return *code;
    if (!installation)
        return m_loop.refuse(Reason::ProgramMissing,
                             QStringLiteral("LibreOffice (soffice) is not installed"));
    Engine engine(*installation, start.folder());
    if (!engine.start() || !Confinement::connectNoMore())
        return m_loop.refuse(Reason::EngineFailed,
                             QStringLiteral("LibreOffice (soffice) could not be started"));
    return serve(engine);
}

int OfficeWorker::serve(Engine &engine)
{
    const QJsonObject greeting{{QStringLiteral("worker"), QStringLiteral("office")},
                               {QStringLiteral("engine"), engine.processId()},
                               {QStringLiteral("engineVersion"), engine.version()}};
    return m_loop.run(greeting,
                      [&](const QJsonObject &request) { return answer(engine, request); });
}

WorkerResult OfficeWorker::answer(Engine &engine, const QJsonObject &request)
{
    const ExportOrder order{request.value(QLatin1String("input")).toString(),
                            request.value(QLatin1String("output")).toString(),
                            request.value(QLatin1String("plain")).toBool()};
    if (request.value(QLatin1String("op")).toString() != QLatin1String("export") ||
        !QDir::isAbsolutePath(order.input) || !QDir::isAbsolutePath(order.output))
        return {Reason::EngineFailed, QStringLiteral("the request makes no sense"), {}};
    try {
        DocumentExport exporter(engine.connection().desktop(),
                                [this](int percent) { m_loop.progress(percent); });
        WorkerResult result;
        EngineMainThread mainThread(engine.connection().mainLoop(),
                                    [&engine] { return engine.isAlive(); });
        mainThread.run([&] { result = exporter.run(order); });
        return result;
    } catch (const css::lang::DisposedException &) {
        return engineGone(engine);
    } catch (const css::uno::Exception &error) {
        qWarning("engine: %ls", qUtf16Printable(UnoValues::text(error.Message)));
        return engineGone(engine);
    }
}

} // namespace Quorlin
