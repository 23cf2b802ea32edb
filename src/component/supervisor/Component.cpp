#include "component/supervisor/Component.h"

#include "component/confinement/Confinement.h"
#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"
#include "component/supervisor/DistilJob.h"
#include "component/supervisor/MergeJob.h"
#include "component/supervisor/PrintJob.h"

#include <QDir>
#include <QJsonArray>
#include <QThreadPool>

#include <algorithm>
#include <utility>

namespace Quorlin {

namespace {

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

constexpr double MostMebibytes = 1 << 20;

Limits limitsOf(const QJsonObject &request)
{
    Limits limits;
    const auto given = request.value(QLatin1String("limits")).toObject();
    const auto read = [&given](const char *key, int &milliseconds) {
        constexpr double MostSeconds = 7 * 24 * 3600;
        const auto seconds = given.value(QLatin1String(key)).toDouble(0);
        if (seconds > 0)
            milliseconds = static_cast<int>(std::min(seconds, MostSeconds) * 1000);
    };
    read("stall", limits.stallMs);
    read("total", limits.totalMs);
    const auto memory = given.value(QLatin1String("memory")).toDouble(0);
    if (memory >= 1)
        limits.memoryBytes = static_cast<qint64>(std::min<double>(memory, MostMebibytes)) << 20;
    const auto atOnce = given.value(QLatin1String("atOnce")).toDouble(0);
    if (atOnce >= 1)
        limits.atOnce = static_cast<int>(std::min<double>(atOnce, Job::MostUnderWay));
    return limits;
}

/// The documents of a request; nothing unless each has an absolute path.
std::optional<QList<QJsonObject>> documentsOf(const QJsonObject &request)
{
    const auto value = request.value(QLatin1String("documents"));
    if (!value.isArray())
        return std::nullopt;
    QList<QJsonObject> documents;
    for (const auto &entry : value.toArray()) {
        documents.append(entry.toObject());
        if (!QDir::isAbsolutePath(textOf(documents.last(), "file")))
            return std::nullopt;
    }
    return documents;
}

QStringList filesOf(const QList<QJsonObject> &documents)
{
    QStringList files;
    for (const auto &document : documents)
        files << textOf(document, "file");
    return files;
}

std::optional<Outputs::Step> stepOf(const QString &word)
{
    if (word == QLatin1String(Protocol::Print))
        return Outputs::Step::Print;
    if (word == QLatin1String(Protocol::Distil))
        return Outputs::Step::Distil;
    if (word == QLatin1String(Protocol::Merge))
        return Outputs::Step::Merge;
    return std::nullopt;
}

} // namespace

Component::Component(const Folders &folders, QObject *parent)
    : QObject(parent), m_journal(folders.journals), m_workFolder(m_journal), m_outputs(m_journal),
      m_programFolder(folders.programs), m_lines(Protocol::MaxLineBytes)
{
}

Component::~Component()
{
    shutDown();
}

bool Component::prepare()
{
    if (!m_journal.open())
        qWarning("The journal cannot be written; a killed run will leave its files behind.");
    for (const auto &path : m_journal.recover())
        qInfo("Removed %s, left by a run that was killed.", qUtf8Printable(path));
    if (!m_workFolder.create())
        return false;
    m_workers = std::make_unique<Workers>(m_programFolder, m_workFolder);
    return true;
}

void Component::greet()
{
    QJsonObject hello{{QStringLiteral("type"), QLatin1String(Protocol::Hello)},
                      {QStringLiteral("protocol"), Protocol::Version},
                      {QStringLiteral("component"), QStringLiteral("quorlin-pdf")},
                      {QStringLiteral("version"), QStringLiteral(QUORLIN_VERSION)}};
    if (const auto missing = Confinement::missing(); !missing.isEmpty())
        hello.insert(QStringLiteral("notice"), missing);
    Q_EMIT send(hello);
}

void Component::receive(const QByteArray &bytes)
{
    m_lines.append(bytes);
    while (const auto line = m_lines.takeLine())
        handle(*line);
    if (m_lines.takeOverflow())
        complain(QStringLiteral("a line is too long"));
}

void Component::handle(const QByteArray &line)
{
    if (line.trimmed().isEmpty())
        return;
    const auto request = Message::decode(line);
    if (!request)
        return complain(QStringLiteral("a line is not a JSON object"));
    const auto type = textOf(*request, "type");
    if (stepOf(type))
        startJob(type, *request);
    else if (type == QLatin1String(Protocol::Clear))
        clear(*request);
    else if (type == QLatin1String(Protocol::Warm))
        m_workers->warm();
    else
        complain(QStringLiteral("no request has this type"));
}

void Component::startJob(const QString &type, const QJsonObject &request)
{
    const auto number = request.value(QLatin1String("job")).toInt(-1);
    if (number < 0)
        return complain(QStringLiteral("a job needs a number"));
    if (m_running.contains(type))
        return complain(QStringLiteral("a job of this kind is running"), number);
    auto job = makeJob(type, number, request);
    if (!job)
        return complain(QStringLiteral("the documents of the job make no sense"), number);
    auto *running = job.release();
    running->setParent(this);
    m_running.insert(type, running);
    connect(running, &Job::report, this, &Component::send);
    connect(running, &Job::finished, this, [this, type, running] {
        m_running.remove(type);
        running->deleteLater();
    });
    running->start();
}

std::unique_ptr<Job> Component::makeJob(const QString &type, int number, const QJsonObject &request)
{
    const auto documents = documentsOf(request);
    if (!documents)
        return nullptr;
    const auto limits = limitsOf(request);
    if (type == QLatin1String(Protocol::Print))
        return std::make_unique<PrintJob>(
            PrintJob::Request{number, textOf(request, "printer"), filesOf(*documents), limits},
            *m_workers, m_workFolder, m_outputs);
    if (type == QLatin1String(Protocol::Merge))
        return std::make_unique<MergeJob>(
            MergeJob::Request{number, filesOf(*documents),
                              request.value(QLatin1String("bookmarks")).toBool(), limits},
            *m_workers, m_workFolder, m_outputs);
    DistilJob::Request distil{number, {}, limits};
    for (const auto &document : *documents)
        distil.documents.append({textOf(document, "file"), textOf(document, "options")});
    return std::make_unique<DistilJob>(distil, *m_workers, m_workFolder, m_outputs);
}

void Component::clear(const QJsonObject &request)
{
    const auto word = textOf(request, "step");
    const auto step = stepOf(word);
    if (!step || m_running.contains(word))
        return complain(QStringLiteral("this step cannot be cleared"));
    m_outputs.clear(*step);
}

void Component::complain(const QString &text, std::optional<int> job)
{
    QJsonObject message{{QStringLiteral("type"), QLatin1String(Protocol::Error)},
                        {QStringLiteral("text"), text}};
    if (job)
        message.insert(QStringLiteral("job"), *job);
    Q_EMIT send(message);
}

void Component::shutDown()
{
    if (!m_workers)
        return;
    for (auto *job : std::as_const(m_running))
        job->disconnect(this);
    // Every task is answered once more, so the jobs have to live until the workers are gone.
    m_workers->shutDown();
    qDeleteAll(std::exchange(m_running, {}));
    m_workers.reset();
    // Copies under way write into the folders that go now.
    QThreadPool::globalInstance()->waitForDone(5000);
    m_outputs.clearAll();
    m_workFolder.remove();
    m_journal.close();
}

} // namespace Quorlin
