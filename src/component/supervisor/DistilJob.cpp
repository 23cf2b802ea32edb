#include "component/supervisor/DistilJob.h"

#include "component/protocol/ResultNames.h"
#include "component/supervisor/Background.h"
#include "component/supervisor/BringIn.h"
#include "component/supervisor/OutputNames.h"
#include "component/supervisor/WorkFolder.h"
#include "component/supervisor/Workers.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace Quorlin {

namespace {

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
        QFile copy(m_workers.distilFolder() + QLatin1Char('/') + name +
                   QStringLiteral(".joboptions"));
        if (!copy.exists() &&
            (!copy.open(QIODevice::WriteOnly) || copy.write(content) != content.size()))
            return false;
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
    m_work[index].options = m_options.value(document.options);
    const auto made = m_outputs.find(document.file);
    if (made && made->origin == PostScriptOrigin::Ours && QFileInfo::exists(made->kept))
        prepareOurs(index, *made);
    else
        prepareOther(index, made ? made->origin : PostScriptOrigin::Foreign);
}

void DistilJob::prepareOurs(qsizetype index, const Outputs::Output &made)
{
    auto &work = m_work[index];
    work.folder = m_workers.distilFolder();
    work.origin = made.origin;
    work.pages = made.pages;
    const auto stem = QStringLiteral("%1/%2").arg(work.folder, m_workFolder.uniqueName());
    work.input = stem + QStringLiteral(".ps");
    work.output = stem + QStringLiteral(".pdf");
    bringIn(index, made.kept);
}

void DistilJob::prepareOther(qsizetype index, PostScriptOrigin origin)
{
    auto &work = m_work[index];
    const auto folder = m_workFolder.newFolder(QStringLiteral("distil"));
    if (!folder)
        return refuse(index, Reason::NoRoom);
    const auto options = *folder + QStringLiteral("/options.joboptions");
    if (!QFile::copy(work.options, options))
        return refuse(index, Reason::NoRoom);
    work.folder = *folder;
    work.origin = origin;
    work.options = options;
    work.input = *folder + QStringLiteral("/input.ps");
    work.output = *folder + QStringLiteral("/output.pdf");
    bringIn(index, m_request.documents[index].file);
}

/// A foreign program may write in its folder, so it never gets a second name of the user's file.
void DistilJob::bringIn(qsizetype index, const QString &from)
{
    const bool foreign = m_work[index].origin == PostScriptOrigin::Foreign;
    const auto copy = [from, to = m_work[index].input, foreign] {
        return foreign ? BringIn::file(from, to) : BringIn::linkedFile(from, to);
    };
    Background::run(this, copy, [this, index](Reason reason) {
        if (reason == Reason::None)
            distil(index);
        else
            refuse(index, reason);
    });
}

void DistilJob::distil(qsizetype index)
{
    const auto &work = m_work[index];
    const bool warm = work.origin == PostScriptOrigin::Ours;
    WorkerTask task;
    task.request = {{QStringLiteral("input"), work.input},
                    {QStringLiteral("output"), work.output},
                    {QStringLiteral("options"), work.options},
                    {QStringLiteral("pages"), work.pages},
                    {QStringLiteral("printed"), work.origin != PostScriptOrigin::Foreign}};
    task.folder = work.folder;
    task.key = warm ? work.options : QString();
    task.limits = limits();
    task.progressed = [this, index](int percent) { setPercent(index, percent); };
    task.finished = [this, index](const WorkerAnswer &answer) { distilled(index, answer); };
    (warm ? m_workers.warmDistil() : m_workers.singleDistil()).submit(std::move(task));
}

void DistilJob::distilled(qsizetype index, const WorkerAnswer &answer)
{
    auto &work = m_work[index];
    if (answer.reason == Reason::None)
        return placeOutput(index);
    const bool worthIt =
        answer.reason == Reason::EngineFailed || work.origin == PostScriptOrigin::Ours;
    const bool possible =
        answer.reason != Reason::Cancelled && answer.reason != Reason::ProgramMissing &&
        answer.reason != Reason::BadOptions && answer.reason != Reason::NothingPrinted;
    if (!work.secondTry && worthIt && possible)
        return retryAlone(index);
    refuse(index, answer.reason, answer.text);
}

/// Once more, in a process of its own.
void DistilJob::retryAlone(qsizetype index)
{
    auto &work = m_work[index];
    const auto origin =
        work.origin == PostScriptOrigin::Ours ? PostScriptOrigin::Printed : work.origin;
    const auto warmInput = work.input;
    QFile::remove(work.output);
    work.secondTry = true;
    work.options = m_options.value(m_request.documents[index].options);
    prepareOther(index, origin);
    if (warmInput != work.input)
        QFile::remove(warmInput);
}

void DistilJob::placeOutput(qsizetype index)
{
    const auto &file = m_request.documents[index].file;
    const auto place = [&outputs = m_outputs, from = m_work[index].output,
                        folder = QFileInfo(file).absolutePath(), base = ResultNames::baseOf(file)] {
        return outputs.place(from, folder, base, QStringLiteral("pdf"),
                             {.step = Outputs::Step::Distil});
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
    const auto &file = m_request.documents[index].file;
    fail(index, reason, text,
         OutputNames::missingName(QFileInfo(file).absolutePath(), ResultNames::baseOf(file),
                                  QStringLiteral("pdf")));
}

/// The document is done: what was made for it goes, and the next one has its place.
void DistilJob::leave(qsizetype index)
{
    if (const auto &input = m_work[index].input; !input.isEmpty())
        QFile::remove(input);
    m_outputs.remove(m_request.documents[index].file);
    --m_underWay;
    QMetaObject::invokeMethod(this, &DistilJob::admitMore, Qt::QueuedConnection);
}

} // namespace Quorlin
