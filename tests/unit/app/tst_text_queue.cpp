#include "app/TextQueue.h"

#include <QTest>

#include <utility>

using namespace Quorlin;

class TestTextQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstTextIsHandedOnAtOnce();
    void aTimerOfTheReceiverFiresBetweenTwoTexts();
    void aReceiverThatStartsItsTimerLateGetsOneAtATime();
    void textsKeepTheirOrder();
    void afterARestTheNextIsHandedOnAtOnce();
    void whatIsForgottenDoesNotCome();
};

namespace {

QString numbered(int number)
{
    return QString::number(number);
}

} // namespace

void TestTextQueue::theFirstTextIsHandedOnAtOnce()
{
    TextQueue queue;
    QStringList got;
    connect(&queue, &TextQueue::next, this, [&got](const QString &text) { got.append(text); });
    queue.add(numbered(1));
    QCOMPARE(got, QStringList{numbered(1)});
    queue.add(numbered(2));
    QCOMPARE(got.size(), 1);
    QTRY_COMPARE(got.size(), 2);
}

void TestTextQueue::aTimerOfTheReceiverFiresBetweenTwoTexts()
{
    constexpr int Texts = 50;
    TextQueue queue;
    QTimer receiver;
    int waiting = 0;
    int handled = 0;
    int mostWaiting = 0;
    connect(&queue, &TextQueue::next, this, [&] {
        mostWaiting = std::max(mostWaiting, ++waiting);
        receiver.start(0);
    });
    connect(&receiver, &QTimer::timeout, this, [&] {
        receiver.stop();
        handled += waiting;
        waiting = 0;
        // A receiver that takes longer than a turn must not get two at once for that.
        QTest::qSleep(3);
    });
    for (int text = 0; text < Texts; ++text)
        queue.add(numbered(text));
    QTRY_COMPARE(handled, Texts);
    QCOMPARE(mostWaiting, 1);
}

/// As where many programs that start at once leave little of the processor to the receiver.
void TestTextQueue::aReceiverThatStartsItsTimerLateGetsOneAtATime()
{
    constexpr int Texts = 50;
    TextQueue queue;
    QTimer receiver;
    int waiting = 0;
    int handled = 0;
    int mostWaiting = 0;
    connect(&queue, &TextQueue::next, this, [&] {
        QTest::qSleep(5);
        mostWaiting = std::max(mostWaiting, ++waiting);
        receiver.start(0);
        QTest::qSleep(5);
    });
    connect(&receiver, &QTimer::timeout, this, [&] {
        receiver.stop();
        handled += std::exchange(waiting, 0);
    });
    for (int text = 0; text < Texts; ++text)
        queue.add(numbered(text));
    QTRY_COMPARE(handled, Texts);
    QCOMPARE(mostWaiting, 1);
}

void TestTextQueue::textsKeepTheirOrder()
{
    TextQueue queue;
    QStringList got;
    QStringList sent;
    connect(&queue, &TextQueue::next, this, [&got](const QString &text) { got.append(text); });
    for (int text = 0; text < 20; ++text) {
        sent.append(numbered(text));
        queue.add(sent.last());
    }
    QTRY_COMPARE(got, sent);
}

void TestTextQueue::afterARestTheNextIsHandedOnAtOnce()
{
    TextQueue queue;
    QStringList got;
    connect(&queue, &TextQueue::next, this, [&got](const QString &text) { got.append(text); });
    queue.add(numbered(1));
    QTest::qWait(20);
    queue.add(numbered(2));
    QCOMPARE(got.size(), 2);
}

void TestTextQueue::whatIsForgottenDoesNotCome()
{
    TextQueue queue;
    QStringList got;
    connect(&queue, &TextQueue::next, this, [&got](const QString &text) { got.append(text); });
    for (int text = 0; text < 3; ++text)
        queue.add(numbered(text));
    queue.clear();
    QTest::qWait(20);
    QCOMPARE(got, QStringList{numbered(0)});
}

QTEST_GUILESS_MAIN(TestTextQueue)
#include "tst_text_queue.moc"
