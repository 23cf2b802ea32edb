#pragma once

#include "convert/PDFLib.h"
#include "ui/IntakeWorker.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>

namespace Quorlin {

/// Takes documents and folders from any way in and finds out, away from the window's thread,
/// which documents can be converted: of a folder all that lie below it, in the order of
/// FolderWalk. What is asked first comes first.
class DocumentIntake : public QObject
{
    Q_OBJECT

public:
    /// So many documents are reported at once at the most.
    static constexpr qsizetype MostAtOnce = 500;

    /// @param query why a document is not taken; called on another thread, at times even after
    /// this object has gone. Code 42 is a PostScript file that is none.
    explicit DocumentIntake(IntakeWorker::Query query = PDFLib::refusalOf,
                            QObject *parent = nullptr);
    /// Does not wait for a file system that does not answer.
    ~DocumentIntake() override;

    /// @param paths of documents and folders; empty ones are passed over, relative ones made
    /// full. Nothing is reported before this returns.
    void add(const QStringList &paths);
    /// Forgets all that has not been reported. idle() comes as usual.
    void cancel();
    /// Something has not been reported yet.
    [[nodiscard]] bool isBusy() const { return m_isBusy; }

Q_SIGNALS:
    /// Full paths of documents that can be converted.
    void documentsAccepted(const QStringList &documents);
    /// A file by the name of PostScript is none. Nothing else is reported until the receivers
    /// have returned, so that they may show a message and wait for the user.
    void refusedPostScript(const QString &path);
    /// All that was added has been reported.
    void idle();

private:
    void deliver();
    /// @return false when the rest must not be reported.
    [[nodiscard]] bool report(const QList<IntakeWorker::Result> &results);
    void settle();

    const IntakeWorker::Query m_query;
    std::shared_ptr<IntakeWorker> m_worker;
    QTimer m_pause; ///< between two deliveries, for the window's other events
    bool m_isBusy = false;
    bool m_isDelivering = false;
};

} // namespace Quorlin
