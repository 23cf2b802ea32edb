#include "component/backends/worker/WorkerLoop.h"

#include "component/backends/worker/OrphanWatch.h"
#include "component/protocol/LineBuffer.h"
#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"

#include <exception>
#include <new>

namespace Quorlin {

namespace {

enum ExitCode { Done = 0, PipeBroke = 1, CannotGoOn = 2, Refused = 3 };

} // namespace

int WorkerLoop::run(const QJsonObject &greeting, const Handler &handler)
{
    auto hello = greeting;
    hello.insert(QStringLiteral("event"), QStringLiteral("ready"));
    const OrphanWatch orphanWatch;
    if (!send(hello))
        return PipeBroke;
    LineBuffer lines(Protocol::MaxLineBytes);
    for (auto bytes = m_pipe.read(); !bytes.isEmpty(); bytes = m_pipe.read()) {
        lines.append(bytes);
        while (const auto line = lines.takeLine()) {
            const auto request = Message::decode(*line);
            const int code = request ? answer(*request, handler) : int(Done);
            if (code != Done)
                return code;
        }
    }
    return Done;
}

int WorkerLoop::refuse(Reason reason, const QString &text)
{
    (void)send({{QStringLiteral("event"), QStringLiteral("unavailable")},
                {QStringLiteral("reason"), reasonKey(reason)},
                {QStringLiteral("text"), text}});
    return Refused;
}

void WorkerLoop::progress(int percent)
{
    const std::lock_guard lock(m_mutex);
    if (m_currentId.isNull() || percent == m_lastPercent)
        return;
    m_lastPercent = percent;
    (void)m_pipe.write(Message::encode({{QStringLiteral("id"), m_currentId},
                                        {QStringLiteral("event"), QStringLiteral("progress")},
                                        {QStringLiteral("percent"), percent}}));
}

bool WorkerLoop::send(const QJsonObject &message)
{
    const std::lock_guard lock(m_mutex);
    return m_pipe.write(Message::encode(message));
}

void WorkerLoop::begin(const QJsonObject &request)
{
    const std::lock_guard lock(m_mutex);
    m_currentId = request.value(QLatin1String("id"));
    m_lastPercent = -1;
}

int WorkerLoop::answer(const QJsonObject &request, const Handler &handler)
{
    begin(request);
    WorkerResult result;
    try {
        result = handler(request);
    } catch (const std::bad_alloc &) {
        result = {Reason::OutOfMemory, {}, {}};
    } catch (const std::exception &error) {
        result = {Reason::EngineFailed, QString::fromUtf8(error.what()), {}};
    }
    auto message = result.values;
    message.insert(QStringLiteral("id"), request.value(QLatin1String("id")));
    const bool done = result.reason == Reason::None;
    message.insert(QStringLiteral("event"),
                   done ? QStringLiteral("done") : QStringLiteral("failed"));
    if (!done) {
        message.insert(QStringLiteral("reason"), reasonKey(result.reason));
        message.insert(QStringLiteral("text"),
                       result.text.isEmpty() ? reasonText(result.reason) : result.text);
    }
    if (result.last)
        message.insert(QStringLiteral("last"), true);
    if (!send(message))
        return PipeBroke;
    return result.last ? CannotGoOn : Done;
}

} // namespace Quorlin
