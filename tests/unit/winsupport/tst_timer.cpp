#include "unit/winsupport/CountedTimers.h"
#include "winsupport/CTimer.h"
#include "winsupport/NumberedError.h"
#include "winsupport/TimerTable.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <limits>
#include <utility>

using namespace Quorlin;

namespace {

/// The number of the error that a new interval raises; 0 when there is none.
quint32 errorOf(CTimer &timer, qint32 interval, QString *description = nullptr)
{
    try {
        timer.Interval(interval);
    } catch (const NumberedError &error) {
        if (description)
            *description = error.description();
        return error.number();
    }
    return 0;
}

} // namespace

class tst_timer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewTimerIsStopped();
    void itTicksEveryInterval();
    void ticksComeOnlyWhileEventsAreHandled();
    void pulseRaisesTheEvent();
    void aTickReachesItsTimerAlone();
    void aTickOfAnUnknownTimerIsDropped();
    void theSameIntervalDoesNothing();
    void aNegativeIntervalOnAStoppedTimerDoesNothing();
    void aNegativeIntervalStops();
    void anotherIntervalStartsAnew();
    void theEndOfTheObjectStops();
    void slotsAreFilledFromTheFirstEmptyOne();
    void theHundredAndFirstFailsWithTheTextAboutTen();
    void theHundredAndFirstKeepsItsSystemTimerForGood();
    void theHundredAndFirstMayRunOnceASlotIsFree();
    void aChangeOfARunningTimerFindsRoomInAFullTable();
    void searchesRunToTheHighWaterMark();
    void aSystemWithoutTimersIsAnError();
    void aFailedChangeLeavesTheTimerStopped();
    void lowCodesAreRaisedUnchanged();
    void errorsNameTheProgram();
};

void tst_timer::aNewTimerIsStopped()
{
    CountedTimers system;
    CTimer timer;
    QCOMPARE(timer.Interval(), 0);
    QVERIFY(system.started.isEmpty());
    QCOMPARE(slotOf(timer), 0);
}

void tst_timer::itTicksEveryInterval()
{
    CTimer timer;
    QSignalSpy ticks(&timer, &CTimer::ThatTime);
    QElapsedTimer clock;
    clock.start();
    timer.Interval(20);
    QTRY_VERIFY(ticks.count() >= 5);
    // The event loop may deliver a tick up to a millisecond early.
    QVERIFY2(clock.elapsed() >= 5 * 19, qPrintable(QString::number(clock.elapsed())));
}

void tst_timer::ticksComeOnlyWhileEventsAreHandled()
{
    CTimer timer;
    QSignalSpy ticks(&timer, &CTimer::ThatTime);
    timer.Interval(1);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 30)
        QThread::yieldCurrentThread();
    QCOMPARE(ticks.count(), 0);
    QTRY_VERIFY(ticks.count() > 0);
}

void tst_timer::pulseRaisesTheEvent()
{
    CTimer timer;
    QSignalSpy ticks(&timer, &CTimer::ThatTime);
    timer.PulseTimer();
    QCOMPARE(ticks.count(), 1);
}

void tst_timer::aTickReachesItsTimerAlone()
{
    CountedTimers system;
    const auto timers = runningTimers(3);
    QSignalSpy first(timers[0].get(), &CTimer::ThatTime);
    QSignalSpy second(timers[1].get(), &CTimer::ThatTime);
    QSignalSpy third(timers[2].get(), &CTimer::ThatTime);
    system.tick(timers[1]->systemIdentifier());
    QCOMPARE(first.count(), 0);
    QCOMPARE(second.count(), 1);
    QCOMPARE(third.count(), 0);
}

void tst_timer::aTickOfAnUnknownTimerIsDropped()
{
    CountedTimers system;
    const auto timers = runningTimers(2);
    QSignalSpy first(timers[0].get(), &CTimer::ThatTime);
    QSignalSpy second(timers[1].get(), &CTimer::ThatTime);
    MTimer::TimerProc(4711);
    MTimer::TimerProc(0);
    QCOMPARE(first.count() + second.count(), 0);
}

void tst_timer::theSameIntervalDoesNothing()
{
    CountedTimers system;
    CTimer timer;
    timer.Interval(Often);
    timer.Interval(Often);
    QCOMPARE(system.started, QList<qint32>{Often});
    QVERIFY(system.stopped.isEmpty());
}

void tst_timer::aNegativeIntervalOnAStoppedTimerDoesNothing()
{
    CountedTimers system;
    CTimer timer;
    timer.Interval(-5);
    QCOMPARE(timer.Interval(), 0);
    QVERIFY(system.started.isEmpty());
    QVERIFY(system.stopped.isEmpty());
}

void tst_timer::aNegativeIntervalStops()
{
    CountedTimers system;
    CTimer timer;
    timer.Interval(Often);
    timer.Interval(std::numeric_limits<qint32>::min());
    QCOMPARE(timer.Interval(), 0);
    QCOMPARE(system.stopped, QList<qint32>{timer.systemIdentifier()});
    QCOMPARE(slotOf(timer), 0);
}

void tst_timer::anotherIntervalStartsAnew()
{
    CountedTimers system;
    CTimer timer;
    timer.Interval(Often);
    const auto former = timer.systemIdentifier();
    timer.Interval(7);
    QCOMPARE(system.started, (QList<qint32>{Often, 7}));
    QCOMPARE(system.stopped, QList<qint32>{former});
    QCOMPARE(timer.Interval(), 7);
    QCOMPARE(slotOf(timer), 1);
}

void tst_timer::theEndOfTheObjectStops()
{
    CountedTimers system;
    runningTimers(3);
    QCOMPARE(system.stopped.size(), 3);
    QVERIFY(system.running.isEmpty());
    QVERIFY(!MTimer::table().at(1));
}

void tst_timer::slotsAreFilledFromTheFirstEmptyOne()
{
    CountedTimers system;
    const auto timers = runningTimers(3);
    QCOMPARE(slotOf(*timers[2]), 3);
    timers[1]->Interval(0);
    CTimer next;
    next.Interval(Often);
    QCOMPARE(slotOf(next), 2);
}

void tst_timer::theHundredAndFirstFailsWithTheTextAboutTen()
{
    // The text names another limit than there is, on purpose.
    CountedTimers system;
    const auto timers = runningTimers(Limit);
    CTimer late;
    QString text;
    QCOMPARE(errorOf(late, 5, &text), 0x80043553U);
    QCOMPARE(text, QStringLiteral("No more than 10 timers allowed per class"));
    QCOMPARE(late.Interval(), 5);
    QCOMPARE(slotOf(late), 0);
}

void tst_timer::theHundredAndFirstKeepsItsSystemTimerForGood()
{
    // Without a slot nobody finds the system timer again, so nobody ends it; on purpose.
    CountedTimers system;
    const auto timers = runningTimers(Limit);
    CTimer late;
    QSignalSpy ticks(&late, &CTimer::ThatTime);
    QVERIFY(errorOf(late, 5) != 0);
    QCOMPARE(system.running.size(), Limit + 1);
    system.tick(late.systemIdentifier());
    QCOMPARE(ticks.count(), 0);
    late.Interval(0);
    QCOMPARE(late.Interval(), 0);
    QVERIFY(system.stopped.isEmpty());
    QCOMPARE(system.running.size(), Limit + 1);
}

void tst_timer::theHundredAndFirstMayRunOnceASlotIsFree()
{
    CountedTimers system;
    const auto timers = runningTimers(Limit);
    CTimer late;
    QVERIFY(errorOf(late, 5) != 0);
    timers[41]->Interval(0);
    late.Interval(0);
    QCOMPARE(errorOf(late, 5), 0U);
    QCOMPARE(slotOf(late), 42);
    QSignalSpy ticks(&late, &CTimer::ThatTime);
    system.tick(late.systemIdentifier());
    QCOMPARE(ticks.count(), 1);
}

void tst_timer::aChangeOfARunningTimerFindsRoomInAFullTable()
{
    CountedTimers system;
    const auto timers = runningTimers(Limit);
    QCOMPARE(errorOf(*timers[10], 5), 0U);
    QCOMPARE(slotOf(*timers[10]), 11);
}

void tst_timer::searchesRunToTheHighWaterMark()
{
    CountedTimers system;
    const auto timers = runningTimers(Limit);
    QCOMPARE(MTimer::table().highWaterMark(), qint16(Limit));
    for (int i = 1; i < Limit - 1; ++i)
        timers[size_t(i)]->Interval(0);
    // Stopping the others hides neither the last slot …
    QSignalSpy ticks(timers[Limit - 1].get(), &CTimer::ThatTime);
    system.tick(timers[Limit - 1]->systemIdentifier());
    QCOMPARE(ticks.count(), 1);
    // … nor does stopping the last one lower the mark.
    timers[Limit - 1]->Interval(0);
    QCOMPARE(system.running.size(), 1);
    QCOMPARE(MTimer::table().highWaterMark(), qint16(Limit));
    MTimer::TimerProc(timers[Limit - 1]->systemIdentifier());
    QCOMPARE(ticks.count(), 1);
}

void tst_timer::aSystemWithoutTimersIsAnError()
{
    CountedTimers system;
    system.refuse = true;
    CTimer timer;
    QString text;
    QCOMPARE(errorOf(timer, 5, &text), 0x80043554U);
    QCOMPARE(text, QStringLiteral("Can't create system timer"));
    QCOMPARE(timer.Interval(), 0);
    QCOMPARE(slotOf(timer), 0);
    QVERIFY(system.stopped.isEmpty());
}

void tst_timer::aFailedChangeLeavesTheTimerStopped()
{
    CountedTimers system;
    CTimer timer;
    timer.Interval(Often);
    system.refuse = true;
    QVERIFY(errorOf(timer, 5) != 0);
    QCOMPARE(timer.Interval(), 0);
    QVERIFY(system.running.isEmpty());
    QCOMPARE(slotOf(timer), 0);
    system.refuse = false;
    QCOMPARE(errorOf(timer, 5), 0U);
}

void tst_timer::lowCodesAreRaisedUnchanged()
{
    for (const auto &[code, number] :
         {std::pair(5U, 5U), std::pair(1000U, 1000U), std::pair(1001U, 0x800403E9U)}) {
        quint32 raised = 0;
        try {
            MTimer::raiseError(code);
        } catch (const NumberedError &error) {
            raised = error.number();
        }
        QCOMPARE(raised, number);
    }
}

void tst_timer::errorsNameTheProgram()
{
    CountedTimers system;
    system.refuse = true;
    CTimer timer;
    try {
        timer.Interval(5);
        QFAIL("no error");
    } catch (const NumberedError &error) {
        const QFileInfo program(QCoreApplication::applicationFilePath());
        QCOMPARE(error.source(), program.fileName() + QStringLiteral(".WindowProc"));
    }
}

QTEST_GUILESS_MAIN(tst_timer)
#include "tst_timer.moc"
