#include "unit/winsupport/CountedTimers.h"
#include "winsupport/CTimer.h"
#include "winsupport/QtTimers.h"
#include "winsupport/TimerTable.h"

#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>
#include <thread>

using namespace Quorlin;

/// What handlers of ticks may do, and the timers of threads.
class tst_timer_handlers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aHandlerMayStopItsTimer();
    void aHandlerMayDeleteItsTimer();
    void aHandlerMayDeleteOtherTimers();
    void aHandlerMayStartTimers();
    void aHandlerMayHandleEvents();
    void aThreadWithoutEventsHasNoTimers();
    void aThreadHasTimersOfItsOwn();
};

void tst_timer_handlers::aHandlerMayStopItsTimer()
{
    CountedTimers system;
    CTimer timer;
    QSignalSpy ticks(&timer, &CTimer::ThatTime);
    connect(&timer, &CTimer::ThatTime, this, [&timer] { timer.Interval(0); });
    timer.Interval(Often);
    system.tick(timer.systemIdentifier());
    QCOMPARE(ticks.count(), 1);
    QVERIFY(system.running.isEmpty());
    MTimer::TimerProc(timer.systemIdentifier());
    QCOMPARE(ticks.count(), 1);
}

void tst_timer_handlers::aHandlerMayDeleteItsTimer()
{
    const QPointer<CTimer> timer(new CTimer);
    connect(timer, &CTimer::ThatTime, this, [timer] { delete timer; });
    timer->Interval(1);
    QTRY_VERIFY(!timer);
    QVERIFY(!MTimer::table().at(1));
}

void tst_timer_handlers::aHandlerMayDeleteOtherTimers()
{
    CountedTimers system;
    auto timers = runningTimers(5);
    auto *ticking = timers[2].get();
    connect(ticking, &CTimer::ThatTime, this, [&timers] { timers.clear(); });
    system.tick(ticking->systemIdentifier());
    QVERIFY(timers.empty());
    QVERIFY(system.running.isEmpty());
}

void tst_timer_handlers::aHandlerMayStartTimers()
{
    CountedTimers system;
    CTimer first;
    Timers others;
    connect(&first, &CTimer::ThatTime, this, [&] {
        first.Interval(0);
        others = runningTimers(Limit);
    });
    first.Interval(Often);
    system.tick(first.systemIdentifier());
    QCOMPARE(others.size(), size_t(Limit));
    QCOMPARE(slotOf(*others.front()), 1);
}

void tst_timer_handlers::aHandlerMayHandleEvents()
{
    CTimer timer;
    CTimer other;
    QSignalSpy ticks(&other, &CTimer::ThatTime);
    bool tickedInside = false;
    connect(&timer, &CTimer::ThatTime, this, [&] {
        timer.Interval(0);
        tickedInside = ticks.wait(5000);
    });
    other.Interval(2);
    timer.Interval(1);
    QTRY_VERIFY(tickedInside);
}

void tst_timer_handlers::aThreadWithoutEventsHasNoTimers()
{
    QtTimers timers;
    qint32 identifier = -1;
    std::thread([&] { identifier = timers.start(Often, &MTimer::TimerProc); }).join();
    QCOMPARE(identifier, 0);
}

void tst_timer_handlers::aThreadHasTimersOfItsOwn()
{
    // Nobody stops this one: it must end with its thread, which a leak detector sees.
    QtTimers timers;
    int ranInThread = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        QEventLoop loop; // gives the thread its events
        if (timers.start(1, &MTimer::TimerProc) != 0)
            ranInThread = timers.running();
    }));
    thread->start();
    QVERIFY(thread->wait(10000));
    QCOMPARE(ranInThread, 1);
    QCOMPARE(timers.running(), 0);
}

QTEST_GUILESS_MAIN(tst_timer_handlers)
#include "tst_timer_handlers.moc"
