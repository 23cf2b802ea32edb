#include "skin/TimedProcess.h"

#include "winsupport/ChildGroup.h"

#include <QEventLoop>
#include <QProcess>
#include <QTimer>

namespace Quorlin {

namespace {

constexpr int StartMilliseconds = 5000;

void waitWithEvents(QProcess &process, std::chrono::milliseconds limit)
{
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    timer.start(limit);
    if (process.state() != QProcess::NotRunning)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

bool TimedProcess::run(Waiting waiting) const
{
    QProcess process;
    ChildGroup::lead(process);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForStarted(StartMilliseconds))
        return false;
    const auto leader = process.processId();
    if (waiting == Waiting::WithEvents)
        waitWithEvents(process, limit);
    else
        process.waitForFinished(int(limit.count()));
    const auto ended = process.state() == QProcess::NotRunning;
    // What it left behind ends with it.
    ChildGroup::end(leader);
    if (!ended)
        process.waitForFinished(StartMilliseconds);
    return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace Quorlin
