#include "convert/JobDriver.h"

#include "convert/JobWindow.h"
#include "convert/PDFDistiller.h"
#include "convert/PDFLib.h"
#include "convert/PDFMerger.h"
#include "convert/ReasonTexts.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <QFile>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

namespace Quorlin {

namespace {

// Shares of the progress bar, in percent.
constexpr int PrintShare = 40;
constexpr int DistilShare = 40;
constexpr int MergeShare = 20;

QList<DocumentEntry> entriesOf(const ComponentObject &object)
{
    QList<DocumentEntry> entries;
    for (qint32 index = 1; index <= object.Documents().Count(); ++index)
        entries.append(object.Documents().Item(index));
    return entries;
}

} // namespace

JobDriver::JobDriver(const Parts &parts, const ConversionSettings &settings, QObject *parent)
    : QObject(parent), m_parts(parts), m_settings(settings)
{
    connect(&m_parts.lib, &PDFLib::OnOutputFilename, this, &JobDriver::PDFLib_OnOutputFilename);
    connect(&m_parts.lib, &PDFLib::OnProgress, this, &JobDriver::PDFLib_OnProgress);
    connect(&m_parts.lib, &PDFLib::OnComplete, this, &JobDriver::PDFLib_OnComplete);
    connect(&m_parts.distiller, &PDFDistiller::OnProgress, this,
            &JobDriver::PDFDistiller_OnProgress);
    connect(&m_parts.distiller, &PDFDistiller::OnComplete, this,
            &JobDriver::PDFDistiller_OnComplete);
    connect(&m_parts.merger, &PDFMerger::OnProgress, this, &JobDriver::PDFMerger_OnProgress);
    connect(&m_parts.merger, &PDFMerger::OnComplete, this, &JobDriver::PDFMerger_OnComplete);
}

void JobDriver::LblConvert_Click()
{
    const auto documents = m_parts.window.documents();
    if (m_parts.window.isWorking() || documents.isEmpty())
        return;
    SetWorkingMode(true);
    m_parts.window.setBarValue(0);
    m_parts.window.setInfo(text("InfoPrint"));
    auto &list = m_parts.lib.Documents();
    list.Clear();
    for (const auto &document : documents)
        list.Add(document);
    m_parts.lib.setPrinterName(m_settings.printerName);
    m_parts.lib.Start();
}

void JobDriver::SetWorkingMode(bool busy)
{
    m_parts.window.setWorkingMode(busy);
}

/// The flag is carried by contract and changes nothing that can be seen.
void JobDriver::EndJob(bool)
{
    m_parts.window.setBarValue(100);
    SetWorkingMode(false);
    m_parts.window.setBarValue(0);
}

void JobDriver::PDFLib_OnOutputFilename(qint32 &Index, QString &Filename)
{
    if (ResultDelivery::fileExists(Filename))
        return;
    // The document is named, not the output that is missing; there is no space before the end.
    showError(text("ErrorPrintFilename1") + QLatin1Char(' ') +
                  m_parts.lib.Documents().Item(Index).Filename() + text("ErrorPrintFilename2"),
              FailureNote::ofOne(failureAt(m_parts.lib, Index), reasons()));
}

void JobDriver::PDFLib_OnProgress(qint32 &Percent)
{
    showProgress(Percent, 0, PrintShare);
}

void JobDriver::PDFDistiller_OnProgress(qint32 &Percent)
{
    showProgress(Percent, PrintShare, DistilShare);
}

void JobDriver::PDFMerger_OnProgress(qint32 &Percent)
{
    showProgress(Percent, PrintShare + DistilShare, MergeShare);
}

/// Rounds to the nearest percent, halves to even.
void JobDriver::showProgress(qint32 &percent, int start, int share)
{
    percent = std::clamp(percent, 0, 100);
    const auto exact = start + double(percent) * share / 100;
    m_parts.window.setBarPercent(int(std::nearbyint(exact)));
}

void JobDriver::PDFLib_OnComplete(bool &Success, float &)
{
    if (!Success) {
        failPrinting();
        return;
    }
    const auto *const options = m_settings.jobOptions.Item(m_parts.window.compression() + 1);
    m_parts.distiller.Documents().Clear();
    m_parts.window.setInfo(text("InfoConvert"));
    if (addPrintedDocuments(options ? options->Filename() : QString()))
        m_parts.distiller.Start();
    else
        failPrinting();
}

/// What was printed lies beside the documents, and nobody will distil it any more.
void JobDriver::failPrinting()
{
    fail("ErrorPDFLibPrint", FailureNote::ofAll(failuresOf(m_parts.lib), reasons()));
    if (!m_parts.lib.isRunning())
        m_parts.lib.Documents().Clear();
}

/// Stops at the first document that was not printed; what was added until then stays unstarted.
bool JobDriver::addPrintedDocuments(const QString &jobOptions)
{
    for (const auto &entry : entriesOf(m_parts.lib)) {
        if (!ResultDelivery::fileExists(entry.OutputFilename()))
            return false;
        m_parts.distiller.Documents().Add(entry.OutputFilename(), {}, jobOptions);
    }
    return true;
}

void JobDriver::PDFDistiller_OnComplete(bool &Success, float &)
{
    if (!Success)
        fail("ErrorPDFLibConvert", FailureNote::ofAll(failuresOf(m_parts.distiller), reasons()));
    else if (m_parts.window.documents().size() >= 2 && m_parts.window.merges())
        merge();
    else
        deliverEach();
}

void JobDriver::merge()
{
    m_notDistilled = failuresOf(m_parts.distiller);
    m_parts.merger.Documents().Clear();
    for (const auto &entry : entriesOf(m_parts.distiller))
        m_parts.merger.Documents().Add(entry.OutputFilename());
    m_parts.merger.setBookmarkPerDocument(true);
    m_parts.window.setInfo(text("InfoMerge"));
    m_parts.merger.Start();
}

/// The window is idle after the first result, so that the next job may begin while the others
/// are still copied: this works on a list of its own, and leaves a window alone that works again.
void JobDriver::deliverEach()
{
    const QScopedValueRollback delivering(m_isDelivering, true);
    QList<FailedDocument> notes;
    for (qint32 index = 1; index <= m_parts.distiller.Documents().Count(); ++index)
        notes.append(failureAt(m_parts.distiller, index));
    for (const auto &entry : entriesOf(m_parts.distiller)) {
        const auto note = notes.takeFirst();
        const auto isThere = ResultDelivery::fileExists(entry.OutputFilename());
        if (isThere)
            m_parts.delivery.deliver(entry.OutputFilename(),
                                     ResultDelivery::finalName(entry.Filename()),
                                     m_parts.window.showsResult());
        else
            showError(text("ErrorPDFLibConvert"), FailureNote::ofAll({note}, reasons()));
        if (!m_parts.lib.isRunning())
            EndJob(isThere);
    }
}

void JobDriver::PDFMerger_OnComplete(bool &Success, float &)
{
    const auto merged = m_parts.merger.Documents().Item(1).OutputFilename();
    if (Success && ResultDelivery::fileExists(merged))
        deliverMerged(merged);
    else
        fail("ErrorPDFLibMerge", whyNotMerged());
}

void JobDriver::deliverMerged(const QString &merged)
{
    const auto proposed = ResultDelivery::finalName(m_parts.merger.Documents().Item(1).Filename());
    const auto target = m_parts.window.askForTarget(text("DialogSaveTitle"),
                                                    QStringLiteral("Document PDF|*.pdf"), proposed);
    if (target.isEmpty())
        QFile::remove(merged);
    else
        m_parts.delivery.deliver(merged, target, m_parts.window.showsResult());
    EndJob(true);
}

/// A document that was not distilled is the fault of the merge. Of the others the component says
/// the same, whichever it is: then none is named.
QString JobDriver::whyNotMerged() const
{
    if (!m_notDistilled.isEmpty())
        return FailureNote::ofAll(m_notDistilled, reasons());
    return FailureNote::ofOne(failureAt(m_parts.merger, 1), reasons());
}

const ReasonTexts &JobDriver::reasons() const
{
    static const ReasonTexts english;
    return m_parts.reasons ? *m_parts.reasons : english;
}

/// Named after the user's document, whatever the step made of it.
FailedDocument JobDriver::failureAt(const ComponentObject &object, qint32 index) const
{
    const auto entry = object.Documents().Item(index);
    const auto document = m_parts.lib.Documents().Item(index).Filename();
    const auto reason = entry.failure();
    return {document.isEmpty() ? entry.Filename() : document,
            reason == Reason::None ? Reason::EngineFailed : reason, entry.failureDetail()};
}

QList<FailedDocument> JobDriver::failuresOf(const ComponentObject &object) const
{
    QList<FailedDocument> failures;
    for (qint32 index = 1; index <= object.Documents().Count(); ++index) {
        const auto entry = object.Documents().Item(index);
        if (entry.failure() != Reason::None || !ResultDelivery::fileExists(entry.OutputFilename()))
            failures.append(failureAt(object, index));
    }
    return failures;
}

void JobDriver::fail(const char *key, const QString &why)
{
    showError(text(key), why);
    EndJob(false);
}

void JobDriver::showError(const QString &text, const QString &why)
{
    m_parts.messages.showWithDetail(text, MessageStyle::Critical, this->text("ErrorWindowTitle"),
                                    why);
}

QString JobDriver::text(const char *key) const
{
    return m_parts.texts.text(QLatin1String(key));
}

} // namespace Quorlin
