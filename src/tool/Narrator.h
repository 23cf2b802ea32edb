#pragma once

#include "tool/Options.h"
#include "tool/ProgressDisplay.h"
#include "tool/Report.h"

namespace Quorlin {

class Console;

/// Tells people what a run does: results on standard output, everything else on standard error.
class Narrator
{
public:
    /// @param console must outlive this object.
    Narrator(Console &console, const Options &options);

    void setStage(const QString &text) { m_progress.setStage(text); }
    void setPercent(int percent) { m_progress.setPercent(percent); }
    void complain(const QString &text);
    void log(const QString &line);
    void waitForTyping();

    /// With what one can do about it, at the first failure of each kind and not when quiet.
    void tellFailure(const DocumentRecord &document);
    void tellResult(const DocumentRecord &document);
    void tellMerged(const Report &report);

    /// The last words of a run that was not broken off: the table that was asked for, else one
    /// line for more than one document.
    void conclude(const Report &report);

    /// Writes the report to where the options say. @return false after telling why it failed.
    [[nodiscard]] bool writeReport(const Report &report);

    /// Whether all lines reached standard output. @return false after telling why not.
    [[nodiscard]] bool everythingArrived();

private:
    void tell(const QString &line);
    void tellTable(const Report &report);
    [[nodiscard]] bool writeReportFile(const QByteArray &bytes);

    Console &m_console;
    Options m_options;
    ProgressDisplay m_progress;
    QList<Reason> m_advised; ///< the user knows what to do about these
};

} // namespace Quorlin
