#include "support/StandInWorker.h"

#include "component/protocol/Message.h"
#include "support/StandInDocuments.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>
#include <QThread>

#include <cstdlib>
#include <iostream>
#include <string>

namespace Quorlin {

int StandInWorker::run(const QString &greeting)
{
    if (greeting == QLatin1String("die"))
        die();
    if (greeting == QLatin1String("garbage"))
        say(QByteArray("Welcome!\n[1,2]\n\n\xff\xfe\n{\"event\":7}\n"));
    if (greeting == QLatin1String("unavailable"))
        say({{QStringLiteral("event"), QStringLiteral("unavailable")},
             {QStringLiteral("reason"), reasonKey(Reason::ProgramMissing)},
             {QStringLiteral("text"), QStringLiteral("the engine is not installed")}});
    else if (greeting != QLatin1String("none"))
        say({{QStringLiteral("event"), QStringLiteral("ready")}});
    if (greeting == QLatin1String("unavailable"))
        return 3;
    for (std::string line; std::getline(std::cin, line);)
        if (const auto request = Message::decode(QByteArray::fromStdString(line)))
            serve(*request);
    return 0;
}

void StandInWorker::say(const QJsonObject &message)
{
    say(Message::encode(message));
}

void StandInWorker::say(const QByteArray &bytes)
{
    std::cout.write(bytes.constData(), bytes.size());
    std::cout.flush();
}

void StandInWorker::progress(int percent)
{
    say({{QStringLiteral("id"), m_request.value(QLatin1String("id"))},
         {QStringLiteral("event"), QStringLiteral("progress")},
         {QStringLiteral("percent"), percent}});
}

void StandInWorker::done(QJsonObject values)
{
    values.insert(QStringLiteral("id"), m_request.value(QLatin1String("id")));
    values.insert(QStringLiteral("event"), QStringLiteral("done"));
    say(values);
}

void StandInWorker::failed(Reason reason, const QString &text)
{
    say({{QStringLiteral("id"), m_request.value(QLatin1String("id"))},
         {QStringLiteral("event"), QStringLiteral("failed")},
         {QStringLiteral("reason"), reasonKey(reason)},
         {QStringLiteral("text"), text.isEmpty() ? reasonText(reason) : text},
         {QStringLiteral("last"), m_request.value(QLatin1String("last"))}});
}

void StandInWorker::die()
{
    std::_Exit(70);
}

void StandInWorker::hang()
{
    for (;;)
        QThread::sleep(1000);
}

void StandInWorker::waitFor(const QString &file)
{
    QElapsedTimer clock;
    clock.start();
    while (!QFileInfo::exists(file) && clock.elapsed() < 60'000)
        QThread::msleep(5);
}

/// Writes down beside the program what was asked, for the test to read.
void StandInWorker::note(QJsonObject request) const
{
    const QFileInfo program(QCoreApplication::arguments().first());
    request.insert(QStringLiteral("worker"), program.fileName());
    request.insert(QStringLiteral("pid"), QCoreApplication::applicationPid());
    QFile log(program.absolutePath() + QStringLiteral("/requests.log"));
    if (log.open(QIODevice::WriteOnly | QIODevice::Append))
        log.write(Message::encode(request));
}

/// A process that stays when nobody ends it; it belongs to the group of this one.
qint64 StandInWorker::startChild() const
{
    auto *child = new QProcess;
    child->setStandardInputFile(QProcess::nullDevice());
    child->setStandardOutputFile(QProcess::nullDevice());
    child->start(QStringLiteral("sleep"), {QStringLiteral("600")});
    child->waitForStarted();
    QFile file(m_request.value(QLatin1String("file")).toString());
    if (file.open(QIODevice::WriteOnly))
        file.write(QByteArray::number(child->processId()) + '\n');
    return child->processId();
}

void StandInWorker::serve(const QJsonObject &request)
{
    m_request = request;
    note(request);
    const auto op = request.value(QLatin1String("op")).toString();
    if (StandInDocuments(*this).serve(request))
        return;
    if (op == QLatin1String("die"))
        die();
    if (op == QLatin1String("hang"))
        hang();
    if (op == QLatin1String("hang-with-child") && startChild() > 0)
        hang();
    if (op == QLatin1String("exit-with-child") && startChild() > 0)
        die();
    if (op == QLatin1String("wait-for"))
        waitFor(request.value(QLatin1String("file")).toString());
    if (op == QLatin1String("garbage"))
        say(QByteArray("Working…\n{\"event\":\"done\"\n[]\n\xff\xff\n\n"));
    if (op == QLatin1String("other-id")) {
        say({{QStringLiteral("id"), 4711}, {QStringLiteral("event"), QStringLiteral("done")}});
        say({{QStringLiteral("event"), QStringLiteral("failed")}});
    }
    for (const auto &percent : request.value(QLatin1String("percents")).toArray())
        progress(percent.toInt());
    if (op == QLatin1String("fail"))
        return failed(reasonFromKey(request.value(QLatin1String("reason")).toString()));
    auto values = request;
    values.insert(QStringLiteral("pid"), QCoreApplication::applicationPid());
    done(values);
}

} // namespace Quorlin
