#include "winsupport/clsKelCopyFile.h"

#include "winsupport/EventPump.h"
#include "winsupport/NumberedError.h"
#include "winsupport/mdlKelCopyFile.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include <utility>

namespace Quorlin {

namespace {

constexpr qint32 LaunchDelay = 50;
constexpr qint16 AllCopied = 100;
/// How often a waiting call handles events before it looks whether the copy has ended.
constexpr int RoundsPerTurn = 4;

} // namespace

/// One call of CopyFile. It outlives the object while code further up the stack works on it.
struct clsKelCopyFile::Call
{
    QString source;
    QString destination;
    bool synchronous = false;
    bool cancel = false;
    bool done = false;
    bool result = true;
    bool ended = false; ///< FileFinished was raised
};

clsKelCopyFile::clsKelCopyFile(QObject *parent) : clsKelCopyFile(SystemCopy::native(), parent) {}

clsKelCopyFile::clsKelCopyFile(SystemCopy &system, QObject *parent)
    : QObject(parent), m_system(system)
{
    connect(&vLaunchTimer, &CTimer::ThatTime, this, &clsKelCopyFile::launch);
}

clsKelCopyFile::~clsKelCopyFile()
{
    vLaunchTimer.Interval(0);
    for (const auto &call : {m_asked, m_running})
        if (call && !call->done) {
            call->cancel = true;
            call->result = false;
            call->done = true;
        }
}

bool clsKelCopyFile::CopyFile(const QString &SrcFile, const QString &DstFile, bool Overwrite,
                              bool Synchronous)
{
    if (m_busy)
        return false;
    m_busy = true;
    // The busy flag stays when the destination is in the way: the object refuses from then on.
    const bool found = fileTest(DstFile);
    if (found && !(Overwrite && deleteFile(DstFile)))
        return false;
    m_asked = std::make_shared<Call>();
    m_asked->source = SrcFile;
    m_asked->destination = DstFile;
    m_asked->synchronous = Synchronous;
    if (!startTimer())
        return false;
    return Synchronous ? waitForEnd() : true;
}

/// Failure comes as a result, never as an error: without a timer there is nothing to wait for.
bool clsKelCopyFile::startTimer()
{
    try {
        vLaunchTimer.Interval(LaunchDelay);
        return true;
    } catch (const NumberedError &) {
        vLaunchTimer.Interval(0);
        m_asked.reset();
        m_busy = false;
        return false;
    }
}

/// A handler may delete the object.
bool clsKelCopyFile::waitForEnd()
{
    const QPointer<clsKelCopyFile> self(this);
    const auto call = m_asked;
    EventPump events;
    while (!call->done) {
        for (int round = 0; round < RoundsPerTurn; ++round)
            events.runPending();
        if (!call->done)
            events.waitAndRun();
    }
    if (self)
        m_busy = false;
    return call->result;
}

void clsKelCopyFile::Cancel()
{
    if (!m_busy || !m_asked || m_asked->cancel || m_asked->ended)
        return;
    const auto call = m_asked;
    call->cancel = true;
    call->result = false;
    if (call->synchronous) {
        call->done = true;
    } else {
        // The busy flag stays, on purpose: the object refuses further copies.
        call->ended = true;
        Q_EMIT FileFinished(false, call->source, call->destination);
    }
}

void clsKelCopyFile::launch()
{
    vLaunchTimer.Interval(0);
    const QPointer<clsKelCopyFile> self(this);
    const auto call = m_asked;
    Q_EMIT FileBegin(call->source, call->destination);
    if (self)
        Q_EMIT FilePercent(0, call->source, call->destination);
    if (self)
        runSystemCopy(call);
}

void clsKelCopyFile::runSystemCopy(const std::shared_ptr<Call> &call)
{
    const QPointer<clsKelCopyFile> self(this);
    const auto outer = std::exchange(m_running, call);
    const auto number = mdlKelCopyFile::add(*this);
    const auto routine = [number](qint64 total, qint64 copied) {
        return mdlKelCopyFile::CopyProgressRoutine(total, copied, number);
    };
    const auto outcome = m_system.copy(call->source, call->destination, routine, call->cancel);
    mdlKelCopyFile::remove(number);
    // A copy that was cancelled has failed, even when the cancel came too late.
    call->result = outcome.success && !call->cancel;
    call->done = true;
    if (!outcome.success && !call->cancel)
        qWarning("%s was not copied to %s: %s (error %d)", qUtf8Printable(call->source),
                 qUtf8Printable(call->destination), qUtf8Printable(outcome.text), outcome.error);
    if (!self)
        return;
    m_running = outer;
    if (!outcome.success)
        reportFailure(call);
}

bool clsKelCopyFile::folderTest(const QString &name) const
{
    const QFileInfo entry(name);
    return entry.exists() || entry.isSymLink();
}

bool clsKelCopyFile::fileTest(const QString &name) const
{
    const QFileInfo entry(name);
    return !folderTest(name) && (entry.isFile() || entry.isSymLink());
}

bool clsKelCopyFile::deleteFile(const QString &name) const
{
    return fileTest(name) && QFile::remove(name) && !fileTest(name);
}

void clsKelCopyFile::CopyProgress(qint64 total, qint64 copied)
{
    if (!m_running)
        return;
    if (copied == total)
        reportEnd(m_running);
    else
        Q_EMIT FilePercent(mdlKelCopyFile::percentOf(total, copied), m_running->source,
                           m_running->destination);
}

void clsKelCopyFile::reportEnd(const std::shared_ptr<Call> &call)
{
    if (call->cancel)
        return;
    const QPointer<clsKelCopyFile> self(this);
    Q_EMIT FilePercent(AllCopied, call->source, call->destination);
    if (!self || call->cancel)
        return;
    call->ended = true;
    Q_EMIT FileFinished(true, call->source, call->destination);
    if (self && !call->synchronous)
        m_busy = false;
}

/// Nobody else would tell those who wait for a copy that failed by itself.
void clsKelCopyFile::reportFailure(const std::shared_ptr<Call> &call)
{
    if (call->synchronous || call->cancel)
        return;
    const QPointer<clsKelCopyFile> self(this);
    call->ended = true;
    Q_EMIT FileFinished(false, call->source, call->destination);
    if (self)
        m_busy = false;
}

} // namespace Quorlin
