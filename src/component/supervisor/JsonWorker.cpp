#include "component/supervisor/JsonWorker.h"

#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"

namespace Quorlin {

JsonWorker::JsonWorker(const QString &program, const QStringList &arguments, const QString &name,
                       QObject *parent)
    : Worker(parent), m_program(program), m_arguments(arguments), m_name(name),
      m_lines(Protocol::MaxLineBytes)
{
}

void JsonWorker::prepare(QProcess &process)
{
    process.setProgram(m_program);
    process.setArguments(m_arguments + QStringList{QStringLiteral("--work"), place()});
}

void JsonWorker::begin()
{
    auto message = request();
    message.insert(QStringLiteral("id"), ++m_nextId);
    write(Message::encode(message));
}

void JsonWorker::read(const QByteArray &bytes)
{
    m_lines.append(bytes);
    while (const auto line = m_lines.takeLine()) {
        if (const auto message = Message::decode(*line))
            handle(*message);
    }
}

void JsonWorker::handle(const QJsonObject &message)
{
    const auto event = message.value(QLatin1String("event")).toString();
    if (event == QLatin1String("ready"))
        return becomeReady();
    if (event == QLatin1String("unavailable"))
        return refuseStart(failureOf(message));
    if (!isBusy() || message.value(QLatin1String("id")).toInt(-1) != m_nextId)
        return;
    if (event == QLatin1String("progress"))
        reportProgress(message.value(QLatin1String("percent")).toInt());
    else if (event == QLatin1String("done"))
        answer({Reason::None, {}, message, false});
    else if (event == QLatin1String("failed"))
        answer(failureOf(message));
}

WorkerAnswer JsonWorker::failureOf(const QJsonObject &message)
{
    return {reasonFromKey(message.value(QLatin1String("reason")).toString()),
            message.value(QLatin1String("text")).toString(), message,
            message.value(QLatin1String("last")).toBool()};
}

} // namespace Quorlin
