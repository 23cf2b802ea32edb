#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin {

/// The controls of a window that a conversion reads and drives.
class JobWindow
{
public:
    virtual ~JobWindow() = default;

    /// True while the information zone is visible.
    [[nodiscard]] virtual bool isWorking() const = 0;
    /// Switches every control of the window between idle and working.
    virtual void setWorkingMode(bool working) = 0;

    /// Full paths of the documents, in the order of the list.
    [[nodiscard]] virtual QStringList documents() const = 0;
    /// "Merge files"
    [[nodiscard]] virtual bool merges() const = 0;
    /// "Show result file"
    [[nodiscard]] virtual bool showsResult() const = 0;
    /// Position of the selected quality from 0; -1 when none is selected.
    [[nodiscard]] virtual int compression() const = 0;

    /// What is being done.
    virtual void setInfo(const QString &text) = 0;
    /// The progress bar's own value, from 0 to 100.
    virtual void setBarValue(int value) = 0;
    /// The progress bar's percentage, from 0 to 100.
    virtual void setBarPercent(int percent) = 0;

    /// Asks where to save a merged result; returns when the user has answered.
    /// @param filter in the form "Document PDF|*.pdf".
    /// @return empty when nothing is to be saved.
    [[nodiscard]] virtual QString askForTarget(const QString &title, const QString &filter,
                                               const QString &proposedName) = 0;
};

} // namespace Quorlin
