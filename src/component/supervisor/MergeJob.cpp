#include "component/supervisor/MergeJob.h"

#include "component/protocol/ResultNames.h"
#include "component/supervisor/Background.h"
#include "component/supervisor/BringIn.h"
#include "component/supervisor/ExclusiveFile.h"
#include "component/supervisor/FolderRemoval.h"
#include "component/supervisor/OutputNames.h"
#include "component/supervisor/PdfFile.h"
#include "component/supervisor/WorkFolder.h"
#include "component/supervisor/Workers.h"

#include <QFileInfo>
#include <QJsonArray>

#include <utility>

namespace Quorlin {

namespace {

constexpr char OutputName[] = "/merged.pdf";

} // namespace

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
    m_folder = *folder;
    bringIn();
}

QString MergeJob::inputName(qsizetype index)
{
    return QStringLiteral("/%1.pdf").arg(index + 1);
}

/// Brings the documents to where the worker reaches them: what we made by a second name, what
/// somebody else did as a copy.
void MergeJob::bringIn()
{
    const auto bring = [files = m_request.documents, folder = m_folder, &outputs = m_outputs] {
        for (qsizetype i = 0; i < files.size(); ++i) {
            const auto target = folder + inputName(i);
            const auto reason = outputs.find(files[i]) ? BringIn::linkedFile(files[i], target)
                                                       : BringIn::file(files[i], target);
            if (reason != Reason::None)
                return std::pair(reason, files[i]);
        }
        return std::pair(Reason::None, QString());
    };
    Background::run(this, bring, [this](const std::pair<Reason, QString> &failure) {
        if (failure.first != Reason::None)
            return failAll(failure.first,
                           failure.second + QStringLiteral(": ") + reasonText(failure.first));
        m_versions = inputVersions();
        merge();
    });
}

QJsonObject MergeJob::requestIn(const QString &folder) const
{
    QJsonArray inputs;
    for (qsizetype i = 0; i < count(); ++i)
        inputs.append(
            QJsonObject{{QStringLiteral("file"), folder + inputName(i)},
                        {QStringLiteral("name"), m_request.documents[i]},
                        {QStringLiteral("title"), ResultNames::baseOf(m_request.documents[i])}});
    return {{QStringLiteral("op"), QStringLiteral("merge")},
            {QStringLiteral("inputs"), inputs},
            {QStringLiteral("output"), folder + QLatin1String(OutputName)},
            {QStringLiteral("bookmarks"), m_request.bookmarks}};
}

void MergeJob::merge()
{
    WorkerTask task;
    task.request = [this](const QString &folder) { return requestIn(folder); };
    task.folder = m_folder;
    task.limits = limits();
    task.progressed = [this](int percent) {
        for (qsizetype i = 0; i < count(); ++i)
            setPercent(i, percent);
    };
    task.finished = [this](const WorkerAnswer &answer) { merged(answer); };
    m_workers.merge().submit(std::move(task));
}

QStringList MergeJob::inputVersions() const
{
    QStringList versions;
    for (qsizetype i = 0; i < count(); ++i)
        versions << ExclusiveFile::versionOf(m_folder + inputName(i));
    return versions;
}

/// A worker that died is no reason to lose all documents; a second name does not keep others from
/// writing to the file.
void MergeJob::merged(const WorkerAnswer &answer)
{
    if (answer.reason == Reason::EngineFailed && !std::exchange(m_secondTry, true))
        return merge();
    if (answer.reason != Reason::None)
        return failAll(answer.reason, answer.text);
    if (!PdfFile::looksWhole(output()))
        return failAll(Reason::EngineFailed);
    if (inputVersions() != m_versions)
        return failAll(Reason::EngineFailed, tr("another program changed what was to be joined"));
    placeOutput();
}

void MergeJob::placeOutput()
{
    const auto first = m_request.documents.first();
    const auto place = [&outputs = m_outputs, from = output(), first, folder = m_folder] {
        return outputs.place(from, QFileInfo(first).absolutePath(), ResultNames::baseOf(first),
                             QStringLiteral("merged"),
                             {.step = Outputs::Step::Merge, .folder = folder});
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
    if (!m_folder.isEmpty())
        FolderRemoval::remove(m_folder);
    const auto first = m_request.documents.first();
    const auto missing = OutputNames::missingName(
        QFileInfo(first).absolutePath(), ResultNames::baseOf(first), QStringLiteral("merged"));
    for (qsizetype i = 0; i < count(); ++i)
        fail(i, reason, text, missing);
}

QString MergeJob::output() const
{
    return m_folder + QLatin1String(OutputName);
}

void MergeJob::concluding()
{
    for (const auto &file : std::as_const(m_request.documents))
        m_outputs.remove(file);
}

} // namespace Quorlin
