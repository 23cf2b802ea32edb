#include "component/supervisor/GhostscriptWorker.h"

#include "component/backends/ghostscript/GhostscriptCommand.h"
#include "component/backends/ghostscript/GhostscriptServer.h"
#include "component/supervisor/GhostscriptRun.h"
#include "component/supervisor/PdfFile.h"

#include <QFile>
#include <QRandomGenerator>

namespace Quorlin {

GhostscriptWorker::GhostscriptWorker(const QString &optionsFile, QObject *parent)
    : Worker(parent), m_optionsFile(optionsFile), m_lines(64 * 1024)
{
}

void GhostscriptWorker::prepare(QProcess &process)
{
    // A copy that could not be made is missing when the program looks for it.
    QFile::copy(m_optionsFile, ownOptions());
    GhostscriptRun::prepareProcess(process, place(), GhostscriptCommand::server(place()));
}

std::shared_ptr<const Confinement> GhostscriptWorker::confinement() const
{
    return GhostscriptRun::confinementIn(place());
}

void GhostscriptWorker::started()
{
    write(GhostscriptServer::start(QFile::encodeName(ownOptions()), nextToken()));
}

QString GhostscriptWorker::ownOptions() const
{
    return place() + QStringLiteral("/options.joboptions");
}

void GhostscriptWorker::begin()
{
    m_error.clear();
    m_pages = 0;
    const auto path = [this](QLatin1String key) {
        return QFile::encodeName(request().value(key).toString());
    };
    write(GhostscriptServer::distil(path(QLatin1String("input")), path(QLatin1String("output")),
                                    nextToken()));
}

void GhostscriptWorker::read(const QByteArray &bytes)
{
    m_lines.append(bytes);
    while (const auto line = m_lines.takeLine())
        handle(*line);
}

void GhostscriptWorker::handle(const QByteArray &line)
{
    using Kind = GhostscriptServer::Answer::Kind;
    const auto said = GhostscriptServer::parse(line, m_token);
    if (!said)
        return;
    if (said->kind == Kind::Error) {
        m_error = said->errorName;
        return;
    }
    if (said->kind == Kind::Page) {
        m_pages = said->pages;
        const auto expected = request().value(QLatin1String("pages")).toInt();
        return reportProgress(expected > 0 ? qMin(99, m_pages * 100 / expected) : 0);
    }
    if (!isStarting())
        return finishDocument();
    if (m_error.isEmpty())
        return becomeReady();
    refuseStart(GhostscriptRun::badOptions(m_error));
    end();
}

void GhostscriptWorker::finishDocument()
{
    const auto output = request().value(QLatin1String("output")).toString();
    WorkerAnswer result{Reason::None, {}, {{QStringLiteral("pages"), m_pages}}, false};
    if (!m_error.isEmpty())
        result = GhostscriptRun::failureOf(m_error);
    else if (m_pages == 0)
        result.reason = Reason::NothingPrinted;
    else if (!PdfFile::looksWhole(output))
        result.reason = Reason::EngineFailed;
    // The error ended the program, not the process that interpreted it.
    result.workerLost = false;
    answer(result);
}

QString GhostscriptWorker::programName() const
{
    return GhostscriptRun::name();
}

QByteArray GhostscriptWorker::nextToken()
{
    m_token = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    return m_token;
}

} // namespace Quorlin
