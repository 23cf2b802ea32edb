#pragma once

#include "ui/DocumentIntake.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <chrono>
#include <functional>

namespace Quorlin {

class DocumentList;
class RefusedFiles;

/// Documents that are to be converted without any further wish of the user, as a file manager's
/// menu asks for them. Only a list that holds nothing else is converted by itself: documents that
/// the user has gathered stay, get the requested ones behind them, and wait for Convert.
///
/// Requests that come together become one job. What comes during a job becomes the next one, and
/// takes the place of its documents, whether that job ended well or badly. A list that the user
/// has changed counts as requested again when the user has had it converted, as long as requests
/// brought all that is in it.
class ConvertRequests : public QObject
{
    Q_OBJECT

public:
    /// A job begins so long after the last request: a long selection comes in several.
    static constexpr std::chrono::milliseconds Quiet{300};
    /// After so long without a new document the others are not kept waiting for a file system
    /// that does not answer.
    static constexpr std::chrono::milliseconds LongestWait{2000};

    /// The window that has the list.
    struct Window
    {
        std::function<bool()> isFree; ///< the list may change, and a job may begin
        std::function<void()> convert;
    };

    /// All must outlive the object. @param query as DocumentIntake takes it.
    ConvertRequests(DocumentList &list, RefusedFiles &refused, Window window,
                    IntakeWorker::Query query = PDFLib::refusalOf);

    /// Documents and folders of a request. Those of which an earlier one asks for the same job are
    /// passed over.
    void add(const QStringList &paths);
    /// Forgets what has not come into the list yet, and begins no job.
    void cancel();
    /// Some of what was added has not been looked at yet.
    [[nodiscard]] bool isBusy() const { return m_intake.isBusy(); }
    /// Documents wait for their job; nothing else may come into the list before it begins.
    [[nodiscard]] bool isPending() const { return m_phase == Phase::Due || !m_arrived.isEmpty(); }
    /// To be called when a job begins, whoever started it, and when it ends.
    void workingModeChanged(bool working);

Q_SIGNALS:
    /// Nothing is pending any more.
    void settled();

private:
    enum class Phase {
        Open,     ///< nothing happens by itself
        Due,      ///< the list is to be converted
        Converted ///< the list has been converted and not been changed since
    };

    void take(const QStringList &documents);
    void place();
    void wait();
    void goOn();
    void listChanged();

    DocumentList &m_list;
    RefusedFiles &m_refused;
    Window m_window;
    DocumentIntake m_intake;
    QTimer m_wait;
    QSet<QString> m_asked;   ///< since the last job began
    QStringList m_arrived;   ///< not in the list yet
    QSet<QString> m_brought; ///< what requests brought, while the list holds nothing else
    Phase m_phase = Phase::Open;
    bool m_isPlacing = false;
    bool m_isWorking = false;
};

} // namespace Quorlin
