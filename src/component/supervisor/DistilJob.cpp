#include "component/supervisor/DistilJob.h"

#include "component/protocol/ResultNames.h"
#include "component/supervisor/Background.h"
#include "component/supervisor/BringIn.h"
#include "component/supervisor/FolderRemoval.h"
#include "component/supervisor/OutputNames.h"
#include "component/supervisor/WorkFolder.h"
#include "component/supervisor/Workers.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace Quorlin {

namespace {

constexpr char InputName[] = "/input.ps";
constexpr char OutputName[] = "/output.pdf";
constexpr char OptionsName[] = "/options.joboptions";

/// A job-options file is a few kilobytes; empty when it is missing, no file or absurdly large.
QByteArray smallFile(const QString &path)
{
    constexpr qint64 MostBytes = 1 << 20;
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > MostBytes || !file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

} // namespace

DistilJob::DistilJob(const Request &request, Workers &workers, WorkFolder &workFolder,
                     Outputs &outputs, QObject *parent)
    : Job(request.number, request.documents.size(), request.limits, parent), m_request(request),
      m_workers(workers), m_workFolder(workFolder), m_outputs(outputs),
      m_work(request.documents.size())
{
}

void DistilJob::begin()
{
    if (bringInOptions())
        return admitMore();
    m_nextToAdmit = count();
    for (qsizetype i = 0; i < count(); ++i)
        refuse(i, Reason::BadOptions,
               tr("the job-options file %1 cannot be read").arg(m_request.documents[i].options));
}

/// Copies every job-options file once to where the distillers may read it, under a name made
/// of its content, so that a warm distiller serves all jobs with the same options.
bool DistilJob::bringInOptions()
{
    for (const auto &document : std::as_const(m_request.documents)) {
        if (m_options.contains(document.options))
            continue;
        const auto content = smallFile(document.options);
        if (content.isEmpty())
            return false;
        const auto name = QString::fromLatin1(
            QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
        QFile copy(m_workers.optionsFolder() + QLatin1Char('/') + name +
                   QStringLiteral(".joboptions"));
        if (!copy.exists() && (!copy.open(QIODevice::WriteOnly) ||
                               copy.write(content) != content.size() || !copy.flush())) {
            copy.remove();
            return false;
        }
        m_options.insert(document.options, copy.fileName());
    }
    return true;
}

void DistilJob::admitMore()
{
    while (m_underWay < mostUnderWay() && m_nextToAdmit < count()) {
        ++m_underWay;
        admit(m_nextToAdmit++);
    }
}

void DistilJob::admit(qsizetype index)
{
    const auto &document = m_request.documents[index];
    tell(tr("Distilling %1").arg(QFileInfo(document.file).fileName()));
    const auto made = m_outputs.find(document.file);
    const bool ours =
        made && made->origin == PostScriptOrigin::Ours && QFileInfo::exists(made->kept);
    if (!prepare(index, made ? made->origin : PostScriptOrigin::Foreign))
        return refuse(index, Reason::NoRoom);
    m_work[index].pages = made ? made->pages : 0;
    bringIn(index, ours ? made->kept : document.file);
}

/// Makes the folder that the document's distiller works in.
bool DistilJob::prepare(qsizetype index, PostScriptOrigin origin)
{
    auto &work = m_work[index];
    const auto folder = m_workFolder.newFolder(QStringLiteral("distil"));
    work.folder = folder.value_or(QString());
    work.origin = origin;
    work.options = m_options.value(m_request.documents[index].options);
    return folder &&
           (work.isWarm() || QFile::copy(work.options, *folder + QLatin1String(OptionsName)));
}

/// A foreign program may write in its folder, so it never gets a second name of the user's file.
void DistilJob::bringIn(qsizetype index, const QString &from)
{
    const auto &work = m_work[index];
    const bool foreign = work.origin == PostScriptOrigin::Foreign;
    const auto copy = [from, to = work.folder + QLatin1String(InputName), foreign] {
        return foreign ? BringIn::file(from, to) : BringIn::linkedFile(from, to);
    };
    Background::run(this, copy, [this, index](Reason reason) {
        if (reason == Reason::None)
            distil(index);
        else
            refuse(index, reason);
    });
}

QJsonObject DistilJob::requestIn(const QString &folder, const Work &work) const
{
    return {{QStringLiteral("input"), folder + QLatin1String(InputName)},
            {QStringLiteral("output"), folder + QLatin1String(OutputName)},
            {QStringLiteral("options"), folder + QLatin1String(OptionsName)},
            {QStringLiteral("pages"), work.pages},
            {QStringLiteral("printed"), work.origin != PostScriptOrigin::Foreign}};
}

void DistilJob::distil(qsizetype index)
{
    const auto &work = m_work[index];
    WorkerTask task;
    task.request = [this, index](const QString &folder) {
        return requestIn(folder, m_work[index]);
    };
    task.folder = work.folder;
    task.key = work.isWarm() ? work.options : QString();
    task.limits = limits();
    task.progressed = [this, index](int percent) { setPercent(index, percent); };
    task.finished = [this, index](const WorkerAnswer &answer) { distilled(index, answer); };
    (work.isWarm() ? m_workers.warmDistil() : m_workers.singleDistil()).submit(std::move(task));
}

void DistilJob::distilled(qsizetype index, const WorkerAnswer &answer)
{
    auto &work = m_work[index];
    auto reason = answer.reason;
    if (reason == Reason::None && lacksPages(work, answer))
        reason = Reason::EngineFailed;
    if (reason == Reason::None)
        return placeOutput(index);
    const bool worthIt = reason == Reason::EngineFailed || work.origin == PostScriptOrigin::Ours;
    const bool possible = reason != Reason::Cancelled && reason != Reason::ProgramMissing &&
                          reason != Reason::BadOptions && reason != Reason::NothingPrinted;
    if (!work.secondTry && worthIt && possible)
        return retryAlone(index);
    refuse(index, reason, answer.text);
}

/// What somebody cut beside the document still makes a whole PDF, of the pages that are left.
bool DistilJob::lacksPages(const Work &work, const WorkerAnswer &answer)
{
    return work.pages > 0 &&
           answer.values.value(QLatin1String("pages")).toInt(work.pages) != work.pages;
}

/// Once more, in a process of its own.
void DistilJob::retryAlone(qsizetype index)
{
    auto &work = m_work[index];
    FolderRemoval::remove(work.folder);
    work.secondTry = true;
    if (prepare(index, work.isWarm() ? PostScriptOrigin::Printed : work.origin))
        bringIn(index, m_request.documents[index].file);
    else
        refuse(index, Reason::NoRoom);
}

void DistilJob::placeOutput(qsizetype index)
{
    const auto &file = m_request.documents[index].file;
    const auto place = [&outputs = m_outputs, work = m_work[index].folder,
                        folder = QFileInfo(file).absolutePath(), base = ResultNames::baseOf(file)] {
        return outputs.place(work + QLatin1String(OutputName), folder, base, QStringLiteral("pdf"),
                             {.step = Outputs::Step::Distil, .folder = work});
    };
    Background::run(this, place, [this, index](const Outputs::Placed &placed) {
        if (placed.result == ExclusiveFile::Result::NoRoom)
            return refuse(index, Reason::NoRoom);
        if (placed.result != ExclusiveFile::Result::Done)
            return refuse(index, Reason::NotAllowed);
        leave(index);
        succeed(index, placed.path);
    });
}

void DistilJob::refuse(qsizetype index, Reason reason, const QString &text)
{
    leave(index);
    if (const auto &folder = m_work[index].folder; !folder.isEmpty())
        FolderRemoval::remove(folder);
    const auto &file = m_request.documents[index].file;
    fail(index, reason, text,
         OutputNames::missingName(QFileInfo(file).absolutePath(), ResultNames::baseOf(file),
                                  QStringLiteral("pdf")));
}

/// The document is done: what was made for it goes, and the next one has its place.
void DistilJob::leave(qsizetype index)
{
    if (const auto &folder = m_work[index].folder; !folder.isEmpty())
        QFile::remove(folder + QLatin1String(InputName));
    m_outputs.remove(m_request.documents[index].file);
    --m_underWay;
    QMetaObject::invokeMethod(this, &DistilJob::admitMore, Qt::QueuedConnection);
}

} // namespace Quorlin
