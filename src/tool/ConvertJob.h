#pragma once

#include "convert/PDFDistiller.h"
#include "convert/PDFLib.h"
#include "convert/PDFMerger.h"
#include "tool/DocumentRecord.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>

namespace Quorlin {

/// Prints, distils and, when asked, merges a list of documents.
///
/// A document that fails is left out of the next step. What comes through lies where the
/// component put it and belongs to the caller.
class ConvertJob : public QObject
{
    Q_OBJECT

public:
    struct Plan
    {
        QString printerName;
        QString jobOptionsFile;
        bool merges = false;
        JobLimits limits;
    };

    /// @param client must outlive the job. @param documents those that failed already are
    /// passed over.
    ConvertJob(ComponentClient &client, const Plan &plan, const QList<DocumentRecord> &documents,
               QObject *parent = nullptr);

    /// Returns at once; finished() comes from the event loop, exactly once.
    void start();

    /// Gives every document without a result the reason Cancelled. No more signals come.
    void cancel();

    [[nodiscard]] const QList<DocumentRecord> &documents() const { return m_documents; }

    /// The merged file; empty when nothing was to be merged or nothing came through. With a
    /// single document left it is that document's PDF.
    [[nodiscard]] QString mergedFile() const { return m_mergedFile; }

    /// Seconds since start().
    [[nodiscard]] double seconds() const;

Q_SIGNALS:
    void stageChanged(const QString &text);

    /// @param percent of the whole job, 0 to 100.
    void progressed(int percent);
    void documentFailed(const Quorlin::DocumentRecord &document);
    void finished();

private:
    void connectObject(ComponentObject &object, int from, int share);
    void print();
    void onPrinted();
    void distil();
    void onDistilled();
    void merge();
    void onMerged(bool success);
    void keepResults(const ComponentObject &object, QString DocumentRecord::*result,
                     const QString &text);
    void fail(qsizetype position, Reason reason, const QString &text);
    [[nodiscard]] QList<qsizetype> alive() const;

    Plan m_plan;
    QList<DocumentRecord> m_documents;
    QList<qsizetype> m_step; ///< positions in m_documents of the running step's list
    QString m_mergedFile;
    QElapsedTimer m_clock;
    PDFLib m_lib;
    PDFDistiller m_distiller;
    PDFMerger m_merger;
};

} // namespace Quorlin
