#include "convert/ComponentClient.h"

#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"
#include "convert/ComponentProcess.h"
#include "convert/ConvertLog.h"
#include "convert/JobListener.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace Quorlin {

ComponentClient::ComponentClient(QObject *parent) : ComponentClient(ComponentSettings(), parent) {}

ComponentClient::ComponentClient(const ComponentSettings &settings, QObject *parent)
    : QObject(parent), m_settings(settings)
{
    connect(this, &ComponentClient::logged, this,
            [](const QString &line) { qCInfo(convertLog).noquote() << line; });
}

ComponentClient::~ComponentClient() = default;

void ComponentClient::warm()
{
    process()->send(
        Message::encode({{QStringLiteral("type"), QString::fromLatin1(Protocol::Warm)}}));
}

void ComponentClient::submit(QJsonObject request, JobListener *listener)
{
    const auto number = ++m_lastNumber;
    request.insert(QStringLiteral("job"), number);
    const auto line = Message::encode(request);
    if (line.size() > Protocol::MaxLineBytes) {
        m_jobs.insert(number, {listener, 0});
        post([this, number] {
            loseJob(number, Reason::EngineFailed, QStringLiteral("the list is too long"));
        });
        return;
    }
    auto *const current = process();
    m_jobs.insert(number, {listener, m_serial});
    current->send(line);
}

void ComponentClient::forget(const JobListener *listener)
{
    m_jobs.removeIf([listener](const auto &job) { return job.value().listener == listener; });
}

void ComponentClient::clear(const QString &step)
{
    if (m_process)
        m_process->send(
            Message::encode({{QStringLiteral("type"), QString::fromLatin1(Protocol::Clear)},
                             {QStringLiteral("step"), step}}));
}

void ComponentClient::post(std::function<void()> event)
{
    m_events.post(std::move(event));
}

ComponentProcess *ComponentClient::makeProcess()
{
    return new ComponentProcess(m_settings, this);
}

ComponentProcess *ComponentClient::process()
{
    if (!m_process) {
        m_process = makeProcess();
        connectProcess(++m_serial);
        // Starting a process may fail at once and take a moment: neither belongs into the call.
        QMetaObject::invokeMethod(m_process, &ComponentProcess::start, Qt::QueuedConnection);
    }
    return m_process;
}

void ComponentClient::connectProcess(int serial)
{
    connect(m_process, &ComponentProcess::logged, this, &ComponentClient::logged);
    connect(m_process, &ComponentProcess::noticed, this, [this](const QString &text) {
        if (std::exchange(m_notice, text) != text)
            Q_EMIT noticed(text);
    });
    connect(m_process, &ComponentProcess::reported, this,
            [this](const QJsonObject &report) { post([this, report] { deliver(report); }); });
    connect(m_process, &ComponentProcess::lost, this,
            [this, serial](Reason reason, const QString &text) { onLost(serial, reason, text); });
}

void ComponentClient::deliver(const QJsonObject &report)
{
    const auto type = report.value(QLatin1String("type")).toString();
    const auto number = report.value(QLatin1String("job")).toInt();
    const auto job = m_jobs.constFind(number);
    if (type == QLatin1String(Protocol::Error)) {
        const auto text = report.value(QLatin1String("text")).toString();
        Q_EMIT logged(QStringLiteral("the component says: ") + text);
        loseJob(number, Reason::EngineFailed, text);
    } else if (job != m_jobs.constEnd()) {
        auto *const listener = job->listener;
        if (type == QLatin1String(Protocol::Complete))
            m_jobs.erase(job);
        listener->jobReported(report);
    } else {
        Q_EMIT logged(QStringLiteral("a report of an unknown job: %1 of %2").arg(type).arg(number));
    }
}

void ComponentClient::onLost(int serial, Reason reason, const QString &text)
{
    // A process is told as lost once, and only a lost one is replaced: this is the newest.
    std::exchange(m_process, nullptr)->retire();
    Q_EMIT logged(text);
    // Its last reports are still in the queue and come first.
    post([this, serial, reason, text] { loseJobs(serial, reason, text); });
}

void ComponentClient::loseJobs(int serial, Reason reason, const QString &text)
{
    QList<int> numbers;
    for (auto job = m_jobs.cbegin(); job != m_jobs.cend(); ++job) {
        if (job->process == serial)
            numbers.append(job.key());
    }
    std::ranges::sort(numbers);
    for (const auto number : numbers)
        post([this, number, reason, text] { loseJob(number, reason, text); });
}

void ComponentClient::loseJob(int number, Reason reason, const QString &text)
{
    const auto job = m_jobs.constFind(number);
    if (job == m_jobs.constEnd())
        return;
    auto *const listener = job->listener;
    m_jobs.erase(job);
    listener->jobLost(reason, text);
}

} // namespace Quorlin
