#pragma once

#include "component/backends/ghostscript/GhostscriptCommand.h"
#include "component/supervisor/WorkerPool.h"

#include <QString>

#include <memory>

namespace Quorlin {

class WorkFolder;

/// All workers of one component, by what they do. Each has a folder of its own, and the files of
/// a task come in the task's folder.
class Workers : public QObject
{
    Q_OBJECT

public:
    /// @param programFolder where the worker programs lie; @param workFolder outlives this.
    Workers(const QString &programFolder, WorkFolder &workFolder, QObject *parent = nullptr);
    ~Workers() override;

    /// Opens documents: {"op":"export",…}.
    [[nodiscard]] WorkerPool &office() { return *m_office; }
    /// Prints PDFs to PostScript: {"op":"print",…}.
    [[nodiscard]] WorkerPool &print() { return *m_print; }
    /// Distils PostScript of ours; the key is the job-options file, in optionsFolder(). Needs
    /// "input", "output", "pages".
    [[nodiscard]] WorkerPool &warmDistil() { return *m_warmDistil; }
    /// Distils any PostScript in a process of its own. Needs "input", "output", "options",
    /// "printed" (it came from a PDF).
    [[nodiscard]] WorkerPool &singleDistil() { return *m_singleDistil; }
    /// Joins PDFs: {"op":"merge",…}.
    [[nodiscard]] WorkerPool &merge() { return *m_merge; }

    /// Has as many engines as suit a list of documents.
    /// @param atOnce the driver's wish how many are worked on at once; 0: it has none.
    void prepareFor(int atOnce, qsizetype documents);

    /// So many engines suit a list: at the most one for each core and each document at once,
    /// and a further one only for so many documents that its start pays.
    [[nodiscard]] static int enginesFor(int atOnce, qsizetype documents, int cores);

    /// Where job-options files are kept for the distillers; empty when the disk is full.
    [[nodiscard]] QString optionsFolder();

    /// Starts what the first document will need.
    void warm();

    void shutDown();

private:
    void makePools(int cores);
    [[nodiscard]] std::unique_ptr<Worker> ownWorker(const char *name);
    [[nodiscard]] std::unique_ptr<Worker> placed(std::unique_ptr<Worker> worker, const char *name);
    [[nodiscard]] QString programPath(const char *name) const;

    QString m_programFolder;
    WorkFolder &m_workFolder;
    QString m_optionsFolder;
    std::unique_ptr<WorkerPool> m_office;
    std::unique_ptr<WorkerPool> m_print;
    std::unique_ptr<WorkerPool> m_warmDistil;
    std::unique_ptr<WorkerPool> m_singleDistil;
    std::unique_ptr<WorkerPool> m_merge;
};

} // namespace Quorlin
