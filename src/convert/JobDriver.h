#pragma once

#include "convert/ConversionSettings.h"
#include "convert/FailureNote.h"
#include "convert/ResultDelivery.h"

#include <QObject>

namespace Quorlin {

class ComponentObject;
class JobWindow;
class MessageService;
class PDFDistiller;
class PDFLib;
class PDFMerger;
class ReasonTexts;
class TextSource;

/// From the click on Convert to the delivered PDF: prints all documents, distils them, merges
/// them when asked, and delivers. A chain of handlers, each begun by the end of a step.
///
/// The three steps have fixed shares of the progress bar, 40, 40 and 20 %, whether or not there
/// is a merge. There is no way to cancel a job.
class JobDriver : public QObject
{
    Q_OBJECT

public:
    /// Everything the driver works with; nothing is owned, all must outlive it.
    struct Parts
    {
        PDFLib &lib;
        PDFDistiller &distiller;
        PDFMerger &merger;
        JobWindow &window;
        MessageService &messages;
        const TextSource &texts;
        ResultDelivery &delivery;
        const ReasonTexts *reasons = nullptr; ///< nullptr for English
    };

    /// @param settings the printer's name and the job options, as they are when a job needs them.
    JobDriver(const Parts &parts, const ConversionSettings &settings, QObject *parent = nullptr);

    /// Starts a job with the documents of the window; does nothing while one runs or when there
    /// are none.
    void LblConvert_Click();

    /// The results of a job are being delivered one by one; from the first on, the window is idle.
    [[nodiscard]] bool isDelivering() const { return m_isDelivering; }

private:
    void SetWorkingMode(bool busy);
    void EndJob(bool success);

    void PDFLib_OnOutputFilename(qint32 &Index, QString &Filename);
    void PDFLib_OnProgress(qint32 &Percent);
    void PDFLib_OnComplete(bool &Success, float &Duration);
    void PDFDistiller_OnProgress(qint32 &Percent);
    void PDFDistiller_OnComplete(bool &Success, float &Duration);
    void PDFMerger_OnProgress(qint32 &Percent);
    void PDFMerger_OnComplete(bool &Success, float &Duration);

    void showProgress(qint32 &percent, int start, int share);
    void fail(const char *key, const QString &why);
    void failPrinting();
    void showError(const QString &text, const QString &why);
    [[nodiscard]] const ReasonTexts &reasons() const;
    [[nodiscard]] FailedDocument failureAt(const ComponentObject &object, qint32 index) const;
    [[nodiscard]] QList<FailedDocument> failuresOf(const ComponentObject &object) const;
    [[nodiscard]] QString whyNotMerged() const;
    [[nodiscard]] QString text(const char *key) const;
    [[nodiscard]] bool addPrintedDocuments(const QString &jobOptions);
    void merge();
    void deliverEach();
    void deliverMerged(const QString &merged);

    Parts m_parts;
    const ConversionSettings &m_settings;
    QList<FailedDocument> m_notDistilled; ///< as long as it shows: a merge removes what it read
    bool m_isDelivering = false;
};

} // namespace Quorlin
