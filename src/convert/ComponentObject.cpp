#include "convert/ComponentObject.h"

#include "component/protocol/Protocol.h"
#include "convert/ComponentClient.h"
#include "convert/ConvertLog.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quorlin {

namespace {

qint32 indexOf(const QJsonObject &report)
{
    return report.value(QLatin1String("index")).toInt(0);
}

QString textOf(const QJsonObject &report, const char *member)
{
    return report.value(QLatin1String(member)).toString();
}

/// @param measured stands in for a number of seconds that is missing or makes no sense.
float durationOf(const QJsonObject &report, double measured)
{
    const auto told = report.value(QLatin1String("duration")).toDouble(-1);
    const bool makesSense = told >= 0 && told <= std::numeric_limits<float>::max();
    return static_cast<float>(makesSense ? told : measured);
}

} // namespace

ComponentObject::ComponentObject(ComponentClient &client, const char *step, QObject *parent)
    : QObject(parent), m_client(&client), m_step(step), m_documents([this] {
          if (m_client)
              m_client->clear(QString::fromLatin1(m_step));
      })
{
    const auto clientGone = [this] {
        jobLost(Reason::EngineFailed, QStringLiteral("the PDF component was shut down"));
    };
    connect(&client, &QObject::destroyed, this, clientGone, Qt::QueuedConnection);
}

ComponentObject::~ComponentObject()
{
    if (m_client)
        m_client->forget(this);
}

void ComponentObject::Start()
{
    if (m_running || !m_client) {
        qCWarning(convertLog) << "Start is ignored: the object" << m_step
                              << (m_running ? "works already" : "has no component");
        return;
    }
    prepare();
    if (m_documents.Count() > 0) {
        m_client->submit(request(), this);
        return;
    }
    m_client->post([self = QPointer(this)] {
        if (self)
            self->jobLost(Reason::None, {});
    });
}

void ComponentObject::prepare()
{
    m_running = true;
    m_begun = false;
    m_outputs.clear();
    m_failures.clear();
    for (qint32 index = 1; index <= m_documents.Count(); ++index) {
        m_documents.setOutputFilename(index, {});
        m_documents.setFailure(index, Reason::None, {});
    }
    m_documents.setLocked(true);
    m_clock.start();
}

QJsonObject ComponentObject::request() const
{
    auto request = requestMembers();
    request.insert(QStringLiteral("type"), QString::fromLatin1(m_step));
    QJsonArray documents;
    for (qint32 index = 1; index <= m_documents.Count(); ++index)
        documents.append(documentMembers(m_documents.Item(index)));
    request.insert(QStringLiteral("documents"), documents);
    if (const auto limits = m_limits.toJson(); !limits.isEmpty())
        request.insert(QStringLiteral("limits"), limits);
    return request;
}

QJsonObject ComponentObject::documentMembers(const DocumentEntry &entry) const
{
    return {{QStringLiteral("file"), entry.Filename()}};
}

void ComponentObject::outputKnown(qint32, const QString &) {}

void ComponentObject::jobReported(const QJsonObject &report)
{
    const auto type = textOf(report, "type");
    const QPointer<ComponentObject> self(this);
    begin();
    if (!self)
        return;
    if (type == QLatin1String(Protocol::State))
        reportState(report);
    else if (type == QLatin1String(Protocol::Progress))
        reportProgress(report);
    else if (type == QLatin1String(Protocol::Output))
        reportOutput(indexOf(report), textOf(report, "file"));
    else if (type == QLatin1String(Protocol::Failure))
        reportFailure(indexOf(report), reasonFromKey(textOf(report, "reason")),
                      textOf(report, "text"));
    else if (type == QLatin1String(Protocol::Complete))
        complete(report);
}

void ComponentObject::jobLost(Reason reason, const QString &text)
{
    if (!m_running)
        return;
    const QPointer<ComponentObject> self(this);
    begin();
    for (qint32 index = 1; self && index <= m_documents.Count(); ++index)
        reportFailure(index, reason, text);
    if (self)
        finish(false, static_cast<float>(m_clock.elapsed()) / 1000.0F);
}

void ComponentObject::begin()
{
    if (m_begun)
        return;
    m_begun = true;
    Q_EMIT OnStart();
}

void ComponentObject::reportState(const QJsonObject &report)
{
    auto state = textOf(report, "state");
    Q_EMIT OnStateChange(state);
}

void ComponentObject::reportProgress(const QJsonObject &report)
{
    const auto value = report.value(QLatin1String("percent"));
    if (!value.isDouble())
        return;
    using Limits = std::numeric_limits<qint32>;
    const auto bounded = std::clamp<double>(value.toDouble(), Limits::min(), Limits::max());
    auto percent = static_cast<qint32>(std::lround(bounded));
    Q_EMIT OnProgress(percent);
}

bool ComponentObject::isNewIn(QSet<qint32> &seen, qint32 index) const
{
    if (index < 1 || index > m_documents.Count() || seen.contains(index))
        return false;
    seen.insert(index);
    return true;
}

void ComponentObject::reportOutput(qint32 index, const QString &filename)
{
    if (!isNewIn(m_outputs, index))
        return;
    m_documents.setOutputFilename(index, filename);
    outputKnown(index, filename);
}

void ComponentObject::reportFailure(qint32 index, Reason reason, const QString &text)
{
    if (!isNewIn(m_failures, index))
        return;
    m_documents.setFailure(index, reason, reasonDetail(reason, text));
    Q_EMIT documentFailed(index, reason, text.isEmpty() ? reasonText(reason) : text);
}

void ComponentObject::complete(const QJsonObject &report)
{
    const auto outputs = report.value(QLatin1String("outputs")).toArray();
    const QPointer<ComponentObject> self(this);
    for (qint32 index = 1; index <= m_documents.Count(); ++index) {
        const auto filename = outputs.at(index - 1).toString();
        reportOutput(index, filename);
        if (!self)
            return;
        if (!filename.isEmpty())
            m_documents.setOutputFilename(index, filename);
    }
    const auto measured = static_cast<double>(m_clock.elapsed()) / 1000.0;
    finish(report.value(QLatin1String("success")).toBool(), durationOf(report, measured));
}

void ComponentObject::finish(bool success, float duration)
{
    m_running = false;
    m_documents.setLocked(false);
    Q_EMIT OnComplete(success, duration);
}

} // namespace Quorlin
