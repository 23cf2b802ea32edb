#include "component/backends/office/OfficeWorker.h"

#include "component/backends/office/DocumentExport.h"
#include "component/backends/office/EngineMainThread.h"
#include "component/backends/office/UnoValues.h"

#include <QDir>
#include <QFileInfo>

#include <com/sun/star/lang/DisposedException.hpp>

namespace Quorlin {

namespace {

WorkerResult engineGone()
{
    return {Reason::EngineFailed, QStringLiteral("the office engine ended"), {}, true};
}

} // namespace

int OfficeWorker::run(const QString &workFolder)
{
    const QFileInfo folder(workFolder);
    if (!folder.isDir() || !folder.isWritable())
        return m_loop.refuse(Reason::NotAllowed,
                             QStringLiteral("the working folder cannot be written"));
    const auto installation = EngineInstallation::find();
    if (!installation)
        return m_loop.refuse(Reason::ProgramMissing,
                             QStringLiteral("LibreOffice (soffice) is not installed"));
    Engine engine(*installation, folder.canonicalFilePath());
    if (!engine.start())
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
        return engineGone();
    } catch (const css::uno::Exception &error) {
        qWarning("engine: %ls", qUtf16Printable(UnoValues::text(error.Message)));
        return engineGone();
    }
}

} // namespace Quorlin
