#pragma once

#include "component/backends/ghostscript/GhostscriptCommand.h"
#include "component/supervisor/ExclusiveFile.h"

#include <QHash>
#include <QMutex>
#include <QString>
#include <QStringList>

#include <optional>

namespace Quorlin {

class Journal;

/// The files that the component put beside the user's documents for the next stage.
///
/// A file is removed only while it is the very file that was made here. Several threads may
/// place files at the same time.
class Outputs
{
public:
    enum class Step { Print, Distil, Merge };

    struct Output
    {
        Step step = Step::Print;
        PostScriptOrigin origin = PostScriptOrigin::Foreign;
        QString identity;
        QString version;
        QString kept;   ///< the same content in the working folder; may be empty
        QString folder; ///< of the working folder, goes with the file; may be empty
        int pages = 0;
    };

    struct Placed
    {
        ExclusiveFile::Result result = ExclusiveFile::Result::Failed;
        QString path;
    };

    /// @param journal outlives this object.
    explicit Outputs(Journal &journal);

    /// Puts the finished file at `from` into the folder under a hidden name that no other file
    /// has. `from` stays and is remembered as the kept copy.
    [[nodiscard]] Placed place(const QString &from, const QString &folder, const QString &base,
                               const QString &extension, const Output &properties);

    /// What is known of a file, if it was made here and has not been changed since.
    [[nodiscard]] std::optional<Output> find(const QString &path) const;

    /// Removes a file made here; any other one stays.
    void remove(const QString &path);

    /// Removes what is left of a step's files.
    void clear(Step step);
    void clearAll();

private:
    [[nodiscard]] QStringList pathsOf(Step step) const;

    Journal &m_journal;
    mutable QMutex m_mutex; ///< guards the table
    QHash<QString, Output> m_outputs;
};

} // namespace Quorlin
