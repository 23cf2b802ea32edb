#include "component/supervisor/PrintJob.h"

#include "component/protocol/Acceptance.h"
#include "component/supervisor/Background.h"
#include "component/supervisor/BringIn.h"
#include "component/supervisor/FolderRemoval.h"
#include "component/supervisor/OutputNames.h"
#include "component/supervisor/PdfFile.h"
#include "component/supervisor/WorkFolder.h"
#include "component/supervisor/Workers.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QUrl>

#include <utility>

namespace Quorlin {

namespace {

// A document's progress: the export takes most of the time.
constexpr int ExportedPercent = 60;

Reason reasonOf(ExclusiveFile::Result result)
{
    switch (result) {
    case ExclusiveFile::Result::Done:
        return Reason::None;
    case ExclusiveFile::Result::NoRoom:
        return Reason::NoRoom;
    default:
        return Reason::NotAllowed;
    }
}

QString folderAddress(const QString &folder)
{
    const auto address = QString::fromLatin1(QUrl::fromLocalFile(folder).toEncoded());
    return address.endsWith(QLatin1Char('/')) ? address : address + QLatin1Char('/');
}

// In a document's working folder. The export lies beside the document, since the engine writes
// links to files relative to the PDF.
constexpr char InputFolder[] = "/in";
constexpr char ExportName[] = "/in/quorlin-export.pdf";
constexpr char PrintedName[] = "/printed.ps";

QString inputIn(const QString &folder, const QString &name)
{
    return folder + QLatin1String(InputFolder) + QLatin1Char('/') + name;
}

bool isPdf(const QString &file)
{
    return Acceptance::entranceOf(file) == Entrance::Pdf;
}

bool deservesSecondTry(Reason reason)
{
    return reason == Reason::EngineFailed || reason == Reason::TookTooLong ||
           reason == Reason::Damaged;
}

} // namespace

PrintJob::PrintJob(const Request &request, Workers &workers, WorkFolder &workFolder,
                   Outputs &outputs, QObject *parent)
    : Job(request.number, request.documents.size(), request.limits, parent), m_request(request),
      m_workers(workers), m_workFolder(workFolder), m_outputs(outputs)
{
}

void PrintJob::begin()
{
    const auto places = ResultNames(ResultNames::usersFolders()).places(m_request.documents);
    for (qsizetype i = 0; i < count(); ++i)
        m_documents.append({m_request.documents[i], places[i]});
    m_workers.prepareFor(limits().atOnce, count());
    admitMore();
}

void PrintJob::admitMore()
{
    while (m_underWay < mostUnderWay() && m_nextToAdmit < count()) {
        ++m_underWay;
        admit(m_nextToAdmit++);
    }
    if (m_underWay == 0 && !m_failedOnce.isEmpty()) {
        m_engineGeneration = m_workers.office().generation();
        m_secondTries = std::exchange(m_failedOnce, {});
    }
    while (m_underWay < mostUnderWay() && !m_secondTries.isEmpty()) {
        ++m_underWay;
        retry(m_secondTries.takeFirst());
    }
}

void PrintJob::admit(qsizetype index)
{
    auto &document = m_documents[index];
    const auto name = QFileInfo(document.file).fileName();
    tell(tr("Printing %1").arg(name));
    if (document.place.folder.isEmpty())
        return refuse(index, Reason::NotAllowed);
    if (document.place.inPlace)
        return useAsItIs(index);
    const auto folder = m_workFolder.newFolder(QStringLiteral("document"));
    if (!folder || !QDir().mkdir(*folder + QLatin1String(InputFolder)))
        return refuse(index, Reason::NoRoom);
    document.folder = *folder;
    bringIn(index, BringIn::safeName(name));
}

void PrintJob::bringIn(qsizetype index, const QString &name)
{
    auto &document = m_documents[index];
    document.name = name;
    const auto copy = [from = document.file, to = inputIn(document.folder, name)] {
        return BringIn::document(from, to);
    };
    Background::run(this, copy, [this, index](Reason reason) {
        if (reason == Reason::None)
            broughtIn(index);
        else
            refuse(index, reason);
    });
}

void PrintJob::broughtIn(qsizetype index)
{
    const auto &document = m_documents[index];
    switch (Acceptance::entranceOf(document.file)) {
    case Entrance::Office:
        return exportDocument(index);
    case Entrance::Pdf:
        return print(index);
    case Entrance::PostScript:
        return placeOutput(index, inputIn(document.folder, document.name),
                           {.origin = PostScriptOrigin::Foreign, .folder = document.folder});
    case Entrance::None:
        return refuse(index, Reason::UnknownFormat);
    }
}

void PrintJob::useAsItIs(qsizetype index)
{
    const auto look = [file = m_documents[index].file] { return Acceptance::refusalOf(file); };
    Background::run(this, look, [this, index](Reason reason) {
        if (reason == Reason::None)
            give(index, m_documents[index].file);
        else
            refuse(index, reason);
    });
}

WorkerTask PrintJob::taskFor(qsizetype index, int from, int to)
{
    WorkerTask task;
    task.folder = m_documents[index].folder;
    task.limits = limits();
    task.progressed = [this, index, from, to](int percent) {
        setPercent(index, from + (to - from) * percent / 100);
    };
    return task;
}

void PrintJob::exportDocument(qsizetype index)
{
    auto task = taskFor(index, 0, ExportedPercent);
    task.request = [this, index](const QString &folder) { return exportRequest(index, folder); };
    if (m_documents[index].secondTry)
        task.after = m_engineGeneration;
    task.finished = [this, index](const WorkerAnswer &answer) { exported(index, answer); };
    m_workers.office().submit(std::move(task));
}

QJsonObject PrintJob::exportRequest(qsizetype index, const QString &folder) const
{
    const auto &document = m_documents[index];
    return {{QStringLiteral("op"), QStringLiteral("export")},
            {QStringLiteral("input"), inputIn(folder, document.name)},
            {QStringLiteral("output"), folder + QLatin1String(ExportName)},
            {QStringLiteral("plain"), document.secondTry}};
}

void PrintJob::exported(qsizetype index, const WorkerAnswer &answer)
{
    auto &document = m_documents[index];
    document.exportFolder = answer.folder;
    auto result = answer;
    if (result.reason == Reason::None &&
        !PdfFile::looksWhole(document.folder + QLatin1String(ExportName)))
        result = {Reason::EngineFailed, {}, {}, false};
    if (result.reason != Reason::None)
        return retryLater(index, result);
    print(index);
}

void PrintJob::retryLater(qsizetype index, const WorkerAnswer &answer)
{
    auto &document = m_documents[index];
    if (!deservesSecondTry(answer.reason))
        return refuse(index, answer.reason, answer.text);
    // What the first try said is nearer to the truth than a plainer second one.
    if (document.secondTry)
        return refuse(index, document.firstReason, document.firstText);
    document.firstReason = answer.reason;
    document.firstText = answer.text;
    m_failedOnce.append(index);
    leave();
}

void PrintJob::retry(qsizetype index)
{
    auto &document = m_documents[index];
    document.secondTry = true;
    // An engine that died leaves its lock beside the export, and the next one heeds it.
    const auto folder = document.folder + QLatin1String(InputFolder);
    if (!FolderRemoval::remove(folder) || !QDir().mkdir(folder))
        return refuse(index, Reason::EngineFailed);
    bringIn(index, QStringLiteral("again-") + BringIn::plainName(document.file));
}

QJsonArray PrintJob::rebaseOf(const Document &document)
{
    // Relative links point beside the copy; the working folder's parents stand for those of
    // the document's own folder.
    QJsonArray pairs;
    if (document.exportFolder.isEmpty())
        return pairs;
    auto from = document.exportFolder + QLatin1String(InputFolder);
    auto to = QFileInfo(document.file).absolutePath();
    while (!QDir(from).isRoot()) {
        pairs.append(QJsonArray{folderAddress(from), folderAddress(to)});
        from = QFileInfo(from).absolutePath();
        to = QFileInfo(to).absolutePath();
    }
    return pairs;
}

void PrintJob::print(qsizetype index)
{
    setPercent(index, ExportedPercent);
    auto task = taskFor(index, ExportedPercent, 99);
    task.request = [this, index](const QString &folder) { return printRequest(index, folder); };
    task.finished = [this, index](const WorkerAnswer &answer) { printed(index, answer); };
    m_workers.print().submit(std::move(task));
}

QJsonObject PrintJob::printRequest(qsizetype index, const QString &folder) const
{
    const auto &document = m_documents[index];
    const bool foreign = isPdf(document.file);
    return {{QStringLiteral("op"), QStringLiteral("print")},
            {QStringLiteral("input"),
             foreign ? inputIn(folder, document.name) : folder + QLatin1String(ExportName)},
            {QStringLiteral("output"), folder + QLatin1String(PrintedName)},
            {QStringLiteral("work"), folder},
            {QStringLiteral("printer"), m_request.printerName},
            {QStringLiteral("title"), document.place.base},
            {QStringLiteral("rebase"), rebaseOf(document)},
            {QStringLiteral("foreign"), foreign}};
}

void PrintJob::printed(qsizetype index, const WorkerAnswer &answer)
{
    auto &document = m_documents[index];
    if (answer.reason == Reason::EngineFailed && !std::exchange(document.printedAgain, true))
        return print(index);
    if (answer.reason != Reason::None)
        return refuse(index, answer.reason, answer.text);
    const auto file = document.folder + QLatin1String(PrintedName);
    if (Acceptance::refusalOf(file) != Reason::None)
        return refuse(index, Reason::EngineFailed);
    const bool ours = Acceptance::entranceOf(document.file) == Entrance::Office;
    placeOutput(index, file,
                {.origin = ours ? PostScriptOrigin::Ours : PostScriptOrigin::Printed,
                 .folder = document.folder,
                 .pages = answer.values.value(QLatin1String("pages")).toInt()});
}

void PrintJob::placeOutput(qsizetype index, const QString &file, const Outputs::Output &properties)
{
    const auto place = [&outputs = m_outputs, file, properties, at = m_documents[index].place] {
        return outputs.place(file, at.folder, at.base, QStringLiteral("ps"), properties);
    };
    Background::run(this, place, [this, index](const Outputs::Placed &placed) {
        if (placed.result == ExclusiveFile::Result::Done)
            give(index, placed.path);
        else
            refuse(index, reasonOf(placed.result));
    });
}

void PrintJob::give(qsizetype index, const QString &output)
{
    leave();
    succeed(index, output);
}

void PrintJob::refuse(qsizetype index, Reason reason, const QString &text)
{
    const auto &document = m_documents[index];
    if (!document.folder.isEmpty())
        FolderRemoval::remove(document.folder);
    leave();
    const auto folder = document.place.folder.isEmpty() ? QFileInfo(document.file).absolutePath()
                                                        : document.place.folder;
    fail(index, reason, text,
         OutputNames::missingName(folder, document.place.base, QStringLiteral("ps")));
}

/// One place is free for the next document.
void PrintJob::leave()
{
    --m_underWay;
    QMetaObject::invokeMethod(this, &PrintJob::admitMore, Qt::QueuedConnection);
}

} // namespace Quorlin
