#pragma once

#include "convert/JobLimits.h"

#include <QString>
#include <QStringList>

namespace Quorlin {

/// What the user asked for on the command line.
struct Options
{
    enum class Action { Convert, Help, Version };

    Action action = Action::Convert;
    QStringList inputs;        ///< documents and folders, as they were written
    QStringList lists;         ///< files that name more of them; "-" is standard input
    bool listsHoldNul = false; ///< names in lists end with NUL and not with a line feed
    QString quality = QStringLiteral("Default");
    QString mergeFile;    ///< empty: every document becomes a PDF of its own
    QString outputFolder; ///< empty: each result lies beside its document
    QString reportFile;   ///< "-" is standard output; empty: no report
    JobLimits limits;
    bool dryRun = false;  ///< tells what would be done
    bool summary = false; ///< ends with a table
    bool quiet = false;
    bool verbose = false;

    [[nodiscard]] bool merges() const { return !mergeFile.isEmpty(); }
    [[nodiscard]] bool reportsToOutput() const { return reportFile == QLatin1String("-"); }

    /// The merged file's absolute path; a relative name lies in the output folder if there is
    /// one, else in the current folder.
    [[nodiscard]] QString mergeTarget() const;

    /// What contradicts itself, in words; empty when all fits together.
    [[nodiscard]] QString inconsistency() const;

private:
    [[nodiscard]] QString wrongNames() const;
    [[nodiscard]] QString wrongTargets() const;
};

} // namespace Quorlin
