#include "winsupport/ThreadedCopy.h"

#include "winsupport/CopyThread.h"
#include "winsupport/EventPump.h"

#include <system_error>

namespace Quorlin {

namespace {

/// What there is to tell: first that nothing is copied yet, and that everything is only when it
/// is safe. @return -1 for nothing new.
qint64 newsOf(const FileCopy &work, qint64 told)
{
    const auto total = work.total();
    const auto copied = told < 0 ? 0 : work.copied();
    return copied > told && copied < total ? copied : -1;
}

/// A cancel by a handler counts until the very end: the work waits before it replaces anything.
SystemCopy::Outcome watch(FileCopy &work, const SystemCopy::Progress &progress, const bool &cancel)
{
    CopyThread thread(work);
    EventPump events;
    qint64 told = -1;
    while (!thread.isFinished()) {
        const auto copied = newsOf(work, told);
        if (cancel)
            work.stop();
        if (!cancel && copied >= 0) {
            told = copied;
            if (progress(work.total(), copied) != 0)
                work.stop();
        } else if (!cancel && work.isWaiting()) {
            work.goOn();
        } else {
            events.waitAndRun();
        }
    }
    return thread.outcome();
}

} // namespace

SystemCopy::Outcome ThreadedCopy::copy(const QString &source, const QString &destination,
                                       const Progress &progress, const bool &cancel)
{
    FileCopy work(source, destination);
    if (cancel)
        work.stop();
    try {
        const auto outcome = watch(work, progress, cancel);
        if (outcome.success)
            static_cast<void>(progress(work.total(), work.total()));
        return outcome;
    } catch (const std::system_error &noThread) {
        return {false, noThread.code().value(), QString::fromLocal8Bit(noThread.what())};
    }
}

} // namespace Quorlin
