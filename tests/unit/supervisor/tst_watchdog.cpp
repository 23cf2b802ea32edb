#include "component/supervisor/Watchdog.h"

#include "support/TestFolder.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds
constexpr int Long = 600'000;

/// Does something again and again while it lives.
class Repeat : public QTimer
{
public:
    Repeat(int milliseconds, const std::function<void()> &action)
    {
        callOnTimeout(action);
        start(milliseconds);
    }
};

} // namespace

class TestWatchdog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bitesWhenNothingMoves();
    void bitesOnce();
    void staysQuietWhileItIsFed();
    void bitesAtTheUpperLimitThoughItIsFed();
    void growingFilesAreProgress_data();
    void growingFilesAreProgress();
    void filesThatDoNotGrowAreNoProgress();
    void aFileThatIsReplacedByASmallerOneIsProgress();
    void staysQuietOnceItIsStopped();
    void startsAnewForTheNextWork();
    void aFolderThatIsGoneIsNoProgress();
    void aFolderWithTooManyFilesIsNoRoom();
};

void TestWatchdog::bitesWhenNothingMoves()
{
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    QElapsedTimer clock;
    clock.start();
    dog.start({.stallMs = 200, .totalMs = Long}, {}, 0);
    QVERIFY(bit.wait(Patience));
    QVERIFY(clock.elapsed() >= 199);
}

void TestWatchdog::bitesOnce()
{
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = 40, .totalMs = 40}, {}, 0);
    QVERIFY(bit.wait(Patience));
    QVERIFY(!bit.wait(400));
    QCOMPARE(bit.count(), 1);
}

void TestWatchdog::staysQuietWhileItIsFed()
{
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = 1000, .totalMs = Long}, {}, 0);
    {
        const Repeat feeding(20, [&dog] { dog.feed(); });
        QVERIFY(!bit.wait(1600));
    }
    QVERIFY(bit.wait(Patience));
}

void TestWatchdog::bitesAtTheUpperLimitThoughItIsFed()
{
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    QElapsedTimer clock;
    clock.start();
    dog.start({.stallMs = Long, .totalMs = 300}, {}, 0);
    const Repeat feeding(20, [&dog] { dog.feed(); });
    QVERIFY(bit.wait(Patience));
    QVERIFY(clock.elapsed() >= 299);
}

void TestWatchdog::growingFilesAreProgress_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("a file") << QByteArray("file");
    QTest::newRow("a hidden file") << QByteArray(".hidden");
    QTest::newRow("in a folder inside") << QByteArray("a/b/file");
}

void TestWatchdog::growingFilesAreProgress()
{
    QFETCH(const QByteArray, name);
    const TestFolder folder;
    QByteArray content;
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = 1000, .totalMs = Long}, folder.path(), 0);
    {
        const Repeat growing(20, [&] { folder.write(name.constData(), content += 'x'); });
        QVERIFY(!bit.wait(1600));
    }
    QVERIFY(bit.wait(Patience));
}

void TestWatchdog::filesThatDoNotGrowAreNoProgress()
{
    const TestFolder folder;
    folder.write("a", "content");
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = 200, .totalMs = Long}, folder.path(), 0);
    const Repeat rewriting(20, [&] { folder.write("a", "CONTENT"); });
    QVERIFY(bit.wait(Patience));
}

void TestWatchdog::aFileThatIsReplacedByASmallerOneIsProgress()
{
    const TestFolder folder;
    QByteArray content(1000, 'x');
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = 1000, .totalMs = Long}, folder.path(), 0);
    const Repeat shrinking(20, [&] {
        content.chop(1);
        folder.write("a", content);
    });
    QVERIFY(!bit.wait(1600));
}

void TestWatchdog::staysQuietOnceItIsStopped()
{
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = 100, .totalMs = 100}, {}, 0);
    dog.stop();
    QVERIFY(!bit.wait(500));
}

void TestWatchdog::startsAnewForTheNextWork()
{
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = 100, .totalMs = 100}, {}, 0);
    QVERIFY(bit.wait(Patience));
    dog.start({.stallMs = 100, .totalMs = 100}, {}, 0);
    QVERIFY(bit.wait(Patience));
    QCOMPARE(bit.count(), 2);
}

void TestWatchdog::aFolderThatIsGoneIsNoProgress()
{
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = 100, .totalMs = Long}, TestFolder().path("gone"), 0);
    QVERIFY(bit.wait(Patience));
}

void TestWatchdog::aFolderWithTooManyFilesIsNoRoom()
{
    const TestFolder folder;
    for (int number = 0; number <= 10'000; ++number)
        folder.write(QByteArray::number(number).constData(), {});
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start({.stallMs = Long, .totalMs = Long}, folder.path(), 0);
    QVERIFY(bit.wait(Patience));
    QCOMPARE(bit[0][0].value<Reason>(), Reason::NoRoom);
}

QTEST_GUILESS_MAIN(TestWatchdog)
#include "tst_watchdog.moc"
