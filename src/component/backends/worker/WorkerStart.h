#pragma once

#include "component/backends/worker/WorkerLoop.h"
#include "component/confinement/Boundaries.h"

#include <QString>

#include <optional>

namespace Quorlin {

/// What every worker does before its first thread and its first document.
class WorkerStart
{
public:
    /// Reads "--work FOLDER" and makes that folder the current one and the one for temporary
    /// files.
    WorkerStart(int argc, char **argv);

    /// The folder, without links in its path; empty when there is none that may be written.
    [[nodiscard]] const QString &folder() const { return m_folder; }

    /// Confines this process to the boundaries for the rest of its life.
    /// @return nothing, or the exit code with which the worker must end; it has then told why.
    [[nodiscard]] std::optional<int> enter(WorkerLoop &loop, const Boundaries &boundaries) const;

private:
    QString m_folder;
};

} // namespace Quorlin
