#include "convert/EventQueue.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace Quorlin;

class tst_event_queue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingRunsInsidePost();
    void handlersRunInOrder();
    void aHandlerWithItsOwnLoopIsNotOvertaken();
    void aHandlerMayEndTheQueue();
    void handlersOfAQueueThatIsGoneDoNotRun();
};

void tst_event_queue::nothingRunsInsidePost()
{
    EventQueue queue;
    bool ran = false;
    queue.post([&ran] { ran = true; });
    QVERIFY(!ran);
    QTRY_VERIFY(ran);
}

void tst_event_queue::handlersRunInOrder()
{
    EventQueue queue;
    QString order;
    queue.post([&] {
        order += QLatin1Char('1');
        queue.post([&order] { order += QLatin1Char('3'); });
    });
    queue.post([&order] { order += QLatin1Char('2'); });
    QTRY_COMPARE(order, QStringLiteral("123"));
}

void tst_event_queue::aHandlerWithItsOwnLoopIsNotOvertaken()
{
    EventQueue queue;
    QString order;
    queue.post([&] {
        QEventLoop loop;
        QTimer::singleShot(100, &loop, &QEventLoop::quit);
        queue.post([&order] { order += QLatin1Char('c'); });
        loop.exec();
        order += QLatin1Char('a');
    });
    queue.post([&order] { order += QLatin1Char('b'); });
    QTRY_COMPARE(order, QStringLiteral("abc"));
}

void tst_event_queue::aHandlerMayEndTheQueue()
{
    auto queue = std::make_unique<EventQueue>();
    int ran = 0;
    queue->post([&] {
        ++ran;
        queue.reset();
    });
    queue->post([&ran] { ++ran; });
    QTRY_VERIFY(!queue);
    QTest::qWait(20);
    QCOMPARE(ran, 1);
}

void tst_event_queue::handlersOfAQueueThatIsGoneDoNotRun()
{
    int ran = 0;
    {
        EventQueue queue;
        queue.post([&ran] { ++ran; });
    }
    QTest::qWait(20);
    QCOMPARE(ran, 0);
}

QTEST_GUILESS_MAIN(tst_event_queue)
#include "tst_event_queue.moc"
