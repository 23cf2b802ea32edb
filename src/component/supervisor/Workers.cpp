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
        [this](const WorkerTask &) { return officeWorker(); });
    m_print = std::make_unique<WorkerPool>(
        WorkerPool::Settings{.maxWorkers = cores}, [this](const WorkerTask &) {
            return std::make_unique<JsonWorker>(programPath("quorlin-pdf-print"), QStringList(),
                                                QStringLiteral("quorlin-pdf-print"));
        });
    m_warmDistil = std::make_unique<WorkerPool>(
        WorkerPool::Settings{.maxWorkers = cores, .tasksPerWorker = DocumentsUntilNewDistiller},
        [this](const WorkerTask &task) {
            return std::make_unique<GhostscriptWorker>(distilFolder(), task.key);
        });
    m_singleDistil = std::make_unique<WorkerPool>(
        WorkerPool::Settings{.maxWorkers = cores, .tasksPerWorker = 1},
        [](const WorkerTask &) { return std::make_unique<GhostscriptRun>(); });
    m_merge = std::make_unique<WorkerPool>(WorkerPool::Settings{}, [this](const WorkerTask &) {
        return std::make_unique<JsonWorker>(programPath("quorlin-pdf-merge"), QStringList(),
                                            QStringLiteral("quorlin-pdf-merge"));
    });
}

std::unique_ptr<Worker> Workers::officeWorker()
{
    const auto folder = m_workFolder.newFolder(QStringLiteral("engine")).value_or(QString());
    return std::make_unique<JsonWorker>(programPath("quorlin-pdf-office"),
                                        QStringList{QStringLiteral("--work"), folder},
                                        QStringLiteral("quorlin-pdf-office"));
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

QString Workers::distilFolder()
{
    if (m_distilFolder.isEmpty())
        m_distilFolder = m_workFolder.newFolder(QStringLiteral("distil")).value_or(QString());
    return m_distilFolder;
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
