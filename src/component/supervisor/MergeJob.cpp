#include "component/supervisor/MergeJob.h"

#include "component/protocol/ResultNames.h"
#include "component/supervisor/Background.h"
#include "component/supervisor/OutputNames.h"
#include "component/supervisor/PdfFile.h"
#include "component/supervisor/WorkFolder.h"
#include "component/supervisor/Workers.h"

#include <QFileInfo>
#include <QJsonArray>

namespace Quorlin {

MergeJob::MergeJob(const Request &request, Workers &workers, WorkFolder &workFolder,
                   Outputs &outputs, QObject *parent)
    : Job(request.number, request.documents.size(), request.limits, parent), m_request(request),
      m_workers(workers), m_workFolder(workFolder), m_outputs(outputs)
{
}

void MergeJob::begin()
{
    tell(tr("Merging %n documents", nullptr, static_cast<int>(count())));
    const auto folder = m_workFolder.newFolder(QStringLiteral("merge"));
    if (!folder)
        return failAll(Reason::NoRoom);
    m_output = *folder + QStringLiteral("/merged.pdf");
    QJsonArray inputs;
    for (const auto &file : std::as_const(m_request.documents))
        inputs.append(QJsonObject{{QStringLiteral("file"), file},
                                  {QStringLiteral("title"), ResultNames::baseOf(file)}});
    WorkerTask task;
    task.request = {{QStringLiteral("op"), QStringLiteral("merge")},
                    {QStringLiteral("inputs"), inputs},
                    {QStringLiteral("output"), m_output},
                    {QStringLiteral("bookmarks"), m_request.bookmarks}};
    task.folder = *folder;
    task.limits = limits();
    task.progressed = [this](int percent) {
        for (qsizetype i = 0; i < count(); ++i)
            setPercent(i, percent);
    };
    task.finished = [this](const WorkerAnswer &answer) { merged(answer); };
    m_workers.merge().submit(std::move(task));
}

void MergeJob::merged(const WorkerAnswer &answer)
{
    if (answer.reason != Reason::None)
        return failAll(answer.reason, answer.text);
    if (!PdfFile::looksWhole(m_output))
        return failAll(Reason::EngineFailed);
    placeOutput();
}

void MergeJob::placeOutput()
{
    const auto first = m_request.documents.first();
    const auto place = [&outputs = m_outputs, from = m_output, first] {
        return outputs.place(from, QFileInfo(first).absolutePath(), ResultNames::baseOf(first),
                             QStringLiteral("merged"), {.step = Outputs::Step::Merge});
    };
    Background::run(this, place, [this](const Outputs::Placed &placed) {
        if (placed.result == ExclusiveFile::Result::Done)
            return succeedAll(placed.path);
        failAll(placed.result == ExclusiveFile::Result::NoRoom ? Reason::NoRoom
                                                               : Reason::NotAllowed);
    });
}

void MergeJob::succeedAll(const QString &output)
{
    for (qsizetype i = 0; i < count(); ++i)
        succeed(i, output);
}

void MergeJob::failAll(Reason reason, const QString &text)
{
    const auto first = m_request.documents.first();
    const auto missing = OutputNames::missingName(
        QFileInfo(first).absolutePath(), ResultNames::baseOf(first), QStringLiteral("merged"));
    for (qsizetype i = 0; i < count(); ++i)
        fail(i, reason, text, missing);
}

void MergeJob::concluding()
{
    for (const auto &file : std::as_const(m_request.documents))
        m_outputs.remove(file);
}

} // namespace Quorlin
