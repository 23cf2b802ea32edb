#include "component/supervisor/Job.h"

#include "component/protocol/Protocol.h"

#include <QJsonArray>
#include <QTimer>

#include <algorithm>

namespace Quorlin {

Job::Job(int number, qsizetype count, const Limits &limits, QObject *parent)
    : QObject(parent), m_number(number), m_limits(limits), m_results(count)
{
}

void Job::start()
{
    m_clock.start();
    send(QLatin1String(Protocol::Start));
    if (m_results.isEmpty())
        QTimer::singleShot(0, this, &Job::complete);
    else
        begin();
}

int Job::mostUnderWay() const
{
    return m_limits.atOnce > 0 ? std::min(m_limits.atOnce, MostUnderWay) : MostUnderWay;
}

void Job::tell(const QString &state)
{
    send(QLatin1String(Protocol::State), {{QStringLiteral("state"), state}});
}

void Job::setPercent(qsizetype index, int percent)
{
    auto &result = m_results[index];
    if (result.known || percent <= result.percent)
        return;
    result.percent = std::min(percent, 99);
    reportProgress();
}

void Job::succeed(qsizetype index, const QString &output)
{
    settle(index, {true, 100, Reason::None, {}, output});
}

void Job::fail(qsizetype index, Reason reason, const QString &text, const QString &output)
{
    settle(index, {true, 100, reason, text.isEmpty() ? reasonText(reason) : text, output});
}

void Job::settle(qsizetype index, Result result)
{
    if (m_results[index].known)
        return;
    m_results[index] = std::move(result);
    while (m_reported < m_results.size() && m_results[m_reported].known)
        reportResult(m_reported++);
    reportProgress();
    if (m_reported == m_results.size())
        complete();
}

void Job::reportProgress()
{
    qint64 sum = 0;
    for (const auto &result : std::as_const(m_results))
        sum += result.percent;
    const auto percent = static_cast<int>(sum / m_results.size());
    if (percent <= m_lastPercent)
        return;
    m_lastPercent = percent;
    send(QLatin1String(Protocol::Progress), {{QStringLiteral("percent"), percent}});
}

void Job::reportResult(qsizetype index)
{
    const auto &result = m_results[index];
    const auto position = static_cast<int>(index) + 1;
    if (result.reason != Reason::None)
        send(QLatin1String(Protocol::Failure),
             {{QStringLiteral("index"), position},
              {QStringLiteral("reason"), reasonKey(result.reason)},
              {QStringLiteral("text"), result.text}});
    if (tellsOutputs())
        send(QLatin1String(Protocol::Output),
             {{QStringLiteral("index"), position}, {QStringLiteral("file"), result.output}});
}

void Job::complete()
{
    concluding();
    QJsonArray outputs;
    for (const auto &result : std::as_const(m_results))
        outputs.append(result.output);
    const bool success = m_results.isEmpty() || std::ranges::any_of(m_results, [](const auto &r) {
                             return r.reason == Reason::None;
                         });
    send(QLatin1String(Protocol::Complete),
         {{QStringLiteral("success"), success},
          {QStringLiteral("duration"), static_cast<double>(m_clock.elapsed()) / 1000},
          {QStringLiteral("outputs"), outputs}});
    Q_EMIT finished();
}

void Job::send(const QString &type, QJsonObject message)
{
    message.insert(QStringLiteral("type"), type);
    message.insert(QStringLiteral("job"), m_number);
    Q_EMIT report(message);
}

} // namespace Quorlin
