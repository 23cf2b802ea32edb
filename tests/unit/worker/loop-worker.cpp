// A worker for the test of the workers' loop: does what the request's "op" says.

#include "component/backends/worker/WorkerLoop.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <cstdio>
#include <iostream>
#include <new>
#include <stdexcept>
#include <thread>

using namespace Quorlin;

namespace {

WorkerResult chatter()
{
    std::printf("printed by a library\n");
    std::fflush(stdout);
    std::cout << "{\"id\":1,\"event\":\"done\",\"forged\":true}" << std::endl;
    std::cerr << "for the log" << std::endl;
    return {};
}

WorkerResult progressOfThreads(WorkerLoop &loop)
{
    std::jthread first([&loop] {
        for (int percent = 0; percent <= 100; percent += 2)
            loop.progress(percent);
    });
    std::jthread second([&loop] {
        for (int percent = 1; percent <= 99; percent += 2)
            loop.progress(percent);
    });
    return {};
}

WorkerResult progressOf(WorkerLoop &loop)
{
    for (const int percent : {0, 40, 40, 40, 100})
        loop.progress(percent);
    return {};
}

/// Blocks as work does, with a process of its own beside it.
WorkerResult hang(const QString &noteFile)
{
    QProcess child;
    child.start(QStringLiteral("sleep"), {QStringLiteral("600")});
    child.waitForStarted();
    QFile file(noteFile);
    if (file.open(QIODevice::WriteOnly))
        file.write(QByteArray::number(QCoreApplication::applicationPid()) + ' ' +
                   QByteArray::number(child.processId()) + '\n');
    file.close();
    for (;;)
        QThread::sleep(1000);
}

WorkerResult handle(WorkerLoop &loop, const QJsonObject &request)
{
    const auto op = request.value(QLatin1String("op")).toString();
    if (op == QLatin1String("throw"))
        throw std::runtime_error("the engine says no");
    if (op == QLatin1String("no-memory"))
        throw std::bad_alloc();
    if (op == QLatin1String("chatter"))
        return chatter();
    if (op == QLatin1String("progress"))
        return progressOf(loop);
    if (op == QLatin1String("progress-of-threads"))
        return progressOfThreads(loop);
    if (op == QLatin1String("hang"))
        return hang(request.value(QLatin1String("file")).toString());
    if (op == QLatin1String("protected"))
        return {Reason::Protected, {}, {}};
    if (op == QLatin1String("damaged"))
        return {Reason::Damaged, QStringLiteral("page 3 is broken"), {{QStringLiteral("page"), 3}}};
    if (op == QLatin1String("last"))
        return {.reason = Reason::EngineFailed, .last = true};
    return {Reason::None, {}, {{QStringLiteral("echo"), request}}};
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    WorkerLoop loop;
    if (QCoreApplication::arguments().contains(QStringLiteral("--unavailable")))
        return loop.refuse(Reason::ProgramMissing, QStringLiteral("install it"));
    return loop.run({{QStringLiteral("worker"), QStringLiteral("loop-worker")}},
                    [&loop](const QJsonObject &request) { return handle(loop, request); });
}
