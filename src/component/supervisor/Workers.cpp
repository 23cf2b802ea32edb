#include "component/supervisor/Workers.h"

#include "component/supervisor/GhostscriptRun.h"
#include "component/supervisor/GhostscriptWorker.h"
#include "component/supervisor/JsonWorker.h"
#include "component/supervisor/WorkFolder.h"

#include <QDir>
#include <QThread>

#include <algorithm>

namespace Quorlin {

namespace {

// A second engine halves the time of a long list, but costs a second to start and its memory.
constexpr int MostEngines = 2;
constexpr int DocumentsPerEngine = 8;
// Engines grow with every document; a distiller keeps what hostile fonts may leave behind.
constexpr int DocumentsUntilNewEngine = 200;
constexpr int DocumentsUntilNewDistiller = 100;

int coresOfMachine()
{
    return std::max(1, QThread::idealThreadCount());
}

} // namespace

Workers::Workers(const QString &programFolder, WorkFolder &workFolder, QObject *parent)
    : QObject(parent), m_programFolder(programFolder), m_workFolder(workFolder)
{
    makePools(coresOfMachine());
}

Workers::~Workers() = default;

void Workers::makePools(int cores)
{
    m_office = std::make_unique<WorkerPool>(
        WorkerPool::Settings{.maxWorkers = std::min(cores, MostEngines),
                             .tasksPerWorker = DocumentsUntilNewEngine,
                             .waitingPerWorker = DocumentsPerEngine},
        [this](const WorkerTask &) { return ownWorker("quorlin-pdf-office"); });
    m_print = std::make_unique<WorkerPool>(
        WorkerPool::Settings{.maxWorkers = cores},
        [this](const WorkerTask &) { return ownWorker("quorlin-pdf-print"); });
    m_warmDistil = std::make_unique<WorkerPool>(
        WorkerPool::Settings{.maxWorkers = cores, .tasksPerWorker = DocumentsUntilNewDistiller},
        [this](const WorkerTask &task) {
            return placed(std::make_unique<GhostscriptWorker>(task.key), "gs");
        });
    m_singleDistil = std::make_unique<WorkerPool>(
        WorkerPool::Settings{.maxWorkers = cores, .tasksPerWorker = 1},
        [](const WorkerTask &) { return std::make_unique<GhostscriptRun>(); });
    m_merge = std::make_unique<WorkerPool>(WorkerPool::Settings{}, [this](const WorkerTask &) {
        return ownWorker("quorlin-pdf-merge");
    });
}

std::unique_ptr<Worker> Workers::ownWorker(const char *name)
{
    return placed(
        std::make_unique<JsonWorker>(programPath(name), QStringList(), QLatin1String(name)), name);
}

/// Without a folder of its own the worker says that there is no room for one.
std::unique_ptr<Worker> Workers::placed(std::unique_ptr<Worker> worker, const char *name)
{
    worker->setPlace(m_workFolder.newFolder(QLatin1String(name)).value_or(QString()));
    return worker;
}

QString Workers::programPath(const char *name) const
{
    return QDir(m_programFolder).filePath(QLatin1String(name));
}

void Workers::prepareFor(int atOnce, qsizetype documents)
{
    const int cores = coresOfMachine();
    if (atOnce > 0)
        m_office->resize(enginesFor(atOnce, documents, cores), 1);
    else
        m_office->resize(std::min(cores, MostEngines), DocumentsPerEngine);
}

int Workers::enginesFor(int atOnce, qsizetype documents, int cores)
{
    const auto worthwhile = 1 + std::max<qsizetype>(0, documents - 1) / DocumentsPerEngine;
    return static_cast<int>(std::min<qsizetype>({atOnce, cores, worthwhile}));
}

QString Workers::optionsFolder()
{
    if (m_optionsFolder.isEmpty())
        m_optionsFolder = m_workFolder.newFolder(QStringLiteral("options")).value_or(QString());
    return m_optionsFolder;
}

void Workers::warm()
{
    m_office->warm();
    m_print->warm();
}

void Workers::shutDown()
{
    for (auto *pool :
         {m_office.get(), m_print.get(), m_warmDistil.get(), m_singleDistil.get(), m_merge.get()})
        pool->shutDown();
}

} // namespace Quorlin
