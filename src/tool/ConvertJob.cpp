#include "tool/ConvertJob.h"

#include <QFileInfo>

#include <algorithm>

namespace Quorlin {

ConvertJob::ConvertJob(ComponentClient &client, const Plan &plan,
                       const QList<DocumentRecord> &documents, QObject *parent)
    : QObject(parent), m_plan(plan), m_documents(documents), m_lib(client), m_distiller(client),
      m_merger(client)
{
    const int share = plan.merges ? 40 : 50;
    connectObject(m_lib, 0, share);
    connectObject(m_distiller, share, share);
    connectObject(m_merger, 2 * share, 100 - 2 * share);
    connect(&m_lib, &PDFLib::OnComplete, this, &ConvertJob::onPrinted);
    connect(&m_distiller, &PDFDistiller::OnComplete, this, &ConvertJob::onDistilled);
    connect(&m_merger, &PDFMerger::OnComplete, this,
            [this](bool &success, float &) { onMerged(success); });
}

void ConvertJob::connectObject(ComponentObject &object, int from, int share)
{
    object.setLimits(m_plan.limits);
    connect(&object, &ComponentObject::OnProgress, this, [this, from, share](qint32 &percent) {
        percent = std::clamp(percent, 0, 100);
        Q_EMIT progressed(from + percent * share / 100);
    });
    connect(&object, &ComponentObject::documentFailed, this,
            [this](qint32 index, Reason reason, const QString &text) {
                fail(m_step.at(index - 1), reason, text);
            });
}

void ConvertJob::start()
{
    m_clock.start();
    QMetaObject::invokeMethod(this, &ConvertJob::print, Qt::QueuedConnection);
}

void ConvertJob::cancel()
{
    for (auto *object :
         {static_cast<ComponentObject *>(&m_lib), static_cast<ComponentObject *>(&m_distiller),
          static_cast<ComponentObject *>(&m_merger)})
        object->disconnect(this);
    blockSignals(true);
    for (const auto position : alive())
        fail(position, Reason::Cancelled, {});
}

double ConvertJob::seconds() const
{
    return m_clock.isValid() ? static_cast<double>(m_clock.elapsed()) / 1000.0 : 0.0;
}

QList<qsizetype> ConvertJob::alive() const
{
    QList<qsizetype> positions;
    for (qsizetype position = 0; position < m_documents.size(); ++position) {
        if (!m_documents.at(position).failed())
            positions.append(position);
    }
    return positions;
}

void ConvertJob::print()
{
    m_step = alive();
    if (m_step.isEmpty()) {
        Q_EMIT finished();
        return;
    }
    Q_EMIT stageChanged(QStringLiteral("Printing documents ..."));
    m_lib.Documents().Clear();
    for (const auto position : m_step)
        m_lib.Documents().Add(m_documents.at(position).input, {}, {}, {});
    m_lib.setPrinterName(m_plan.printerName);
    m_lib.Start();
}

void ConvertJob::onPrinted()
{
    keepResults(m_lib, &DocumentRecord::printed, QStringLiteral("it was not printed"));
    distil();
}

void ConvertJob::distil()
{
    m_step = alive();
    if (m_step.isEmpty()) {
        Q_EMIT finished();
        return;
    }
    Q_EMIT stageChanged(QStringLiteral("Converting documents ..."));
    m_distiller.Documents().Clear();
    for (const auto position : m_step)
        m_distiller.Documents().Add(m_documents.at(position).printed, {}, m_plan.jobOptionsFile,
                                    {});
    m_distiller.Start();
}

void ConvertJob::onDistilled()
{
    keepResults(m_distiller, &DocumentRecord::distilled, QStringLiteral("no PDF was made of it"));
    m_step = alive();
    if (m_plan.merges && m_step.size() > 1) {
        merge();
        return;
    }
    if (m_plan.merges && !m_step.isEmpty())
        m_mergedFile = m_documents.at(m_step.first()).distilled;
    Q_EMIT finished();
}

void ConvertJob::merge()
{
    Q_EMIT stageChanged(QStringLiteral("Merging documents ..."));
    m_merger.Documents().Clear();
    for (const auto position : m_step)
        m_merger.Documents().Add(m_documents.at(position).distilled, {}, {}, {});
    m_merger.setBookmarkPerDocument(true);
    m_merger.Start();
}

void ConvertJob::onMerged(bool success)
{
    const auto file = m_merger.Documents().Item(1).OutputFilename();
    if (success && QFileInfo(file).isFile()) {
        m_mergedFile = file;
        for (const auto position : m_step)
            m_documents[position].seconds = seconds();
    }
    for (const auto position : m_step) {
        if (m_mergedFile.isEmpty())
            fail(position, Reason::EngineFailed, QStringLiteral("the documents were not merged"));
    }
    Q_EMIT finished();
}

void ConvertJob::keepResults(const ComponentObject &object, QString DocumentRecord::*result,
                             const QString &text)
{
    for (qsizetype i = 0; i < m_step.size(); ++i) {
        const auto position = m_step.at(i);
        const auto file = object.Documents().Item(static_cast<qint32>(i + 1)).OutputFilename();
        if (m_documents.at(position).failed() || !QFileInfo(file).isFile()) {
            fail(position, Reason::EngineFailed, text);
            continue;
        }
        m_documents[position].*result = file;
        m_documents[position].seconds = seconds();
    }
}

void ConvertJob::fail(qsizetype position, Reason reason, const QString &text)
{
    auto &document = m_documents[position];
    if (document.failed())
        return;
    document.reason = reason;
    document.detail = reasonDetail(reason, text);
    document.seconds = seconds();
    const auto copy = document;
    Q_EMIT documentFailed(copy);
}

} // namespace Quorlin
