#include "component/supervisor/Component.h"

#include "component/confinement/Confinement.h"
#include "component/protocol/Protocol.h"
#include "component/supervisor/ComponentRequest.h"
#include "component/supervisor/DistilJob.h"
#include "component/supervisor/MergeJob.h"
#include "component/supervisor/PrintJob.h"

#include <QThreadPool>

#include <utility>

namespace Quorlin {

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
    if (const auto missing = Confinement::missing(); !missing.isEmpty())
        qWarning("%s", qUtf8Printable(missing));
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
    const auto request = ComponentRequest::read(line);
    switch (request.kind) {
    case ComponentRequest::Kind::None:
        return;
    case ComponentRequest::Kind::Refused:
        return complain(request.complaint, request.number);
    case ComponentRequest::Kind::Job:
        return startJob(request);
    case ComponentRequest::Kind::Clear:
        return clear(request.step);
    case ComponentRequest::Kind::Warm:
        return m_workers->warm();
    }
}

void Component::startJob(const ComponentRequest &request)
{
    const auto step = request.step;
    if (m_running.contains(step))
        return complain(QStringLiteral("a job of this kind is running"), request.number);
    auto *running = makeJob(request).release();
    running->setParent(this);
    m_running.insert(step, running);
    connect(running, &Job::report, this, &Component::send);
    connect(running, &Job::finished, this, [this, step, running] {
        m_running.remove(step);
        running->deleteLater();
    });
    running->start();
}

std::unique_ptr<Job> Component::makeJob(const ComponentRequest &request)
{
    const auto number = *request.number;
    if (request.step == Outputs::Step::Print)
        return std::make_unique<PrintJob>(
            PrintJob::Request{number, request.printer, request.files(), request.limits}, *m_workers,
            m_workFolder, m_outputs);
    if (request.step == Outputs::Step::Merge)
        return std::make_unique<MergeJob>(
            MergeJob::Request{number, request.files(), request.bookmarks, request.limits},
            *m_workers, m_workFolder, m_outputs);
    DistilJob::Request distil{number, {}, request.limits};
    for (const auto &document : request.documents)
        distil.documents.append({document.file, document.options});
    return std::make_unique<DistilJob>(distil, *m_workers, m_workFolder, m_outputs);
}

void Component::clear(Outputs::Step step)
{
    if (m_running.contains(step))
        return complain(QStringLiteral("this step cannot be cleared"));
    m_outputs.clear(step);
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
