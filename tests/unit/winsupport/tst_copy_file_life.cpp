#include "unit/winsupport/CopyScene.h"
#include "unit/winsupport/CopyWatch.h"
#include "unit/winsupport/CountedTimers.h"
#include "unit/winsupport/ScriptedCopy.h"
#include "winsupport/mdlKelCopyFile.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <ctime>
#include <memory>

using namespace Quorlin;

namespace {

const QString A = QStringLiteral("/none/a");
const QString B = QStringLiteral("/none/b");

/// Runs `act` when the object raises its first FilePercent.
template <typename Act>
void atFirstPercent(clsKelCopyFile &object, Act act)
{
    QObject::connect(&object, &clsKelCopyFile::FilePercent, &object,
                     [act, done = false](qint16, const QString &, const QString &) mutable {
                         if (!std::exchange(done, true))
                             act();
                     });
}

} // namespace

/// Copies that run in one another, and objects that end while they copy.
class tst_copy_file_life : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersStartAgainWhenNoCopyRuns();
    void progressOfAnUnknownCopyIsDropped();
    void twoObjectsCopyInOneAnother();
    void theObjectMayGoWhileItsCallWaits();
    void theObjectMayGoBeforeTheLaunch();
    void theObjectMayGoInAnyEvent_data();
    void theObjectMayGoInAnyEvent();
    void theObjectMayGoDuringTheRealCopy();
    void theApplicationMayQuitMeanwhile();
    void windowsLiveWhileACopyIsAwaited();
    void awaitingACopyLeavesTheProcessorAlone();
};

void tst_copy_file_life::numbersStartAgainWhenNoCopyRuns()
{
    clsKelCopyFile object;
    QCOMPARE(mdlKelCopyFile::add(object), 1);
    QCOMPARE(mdlKelCopyFile::add(object), 2);
    mdlKelCopyFile::remove(1);
    QCOMPARE(mdlKelCopyFile::add(object), 3);
    mdlKelCopyFile::remove(2);
    mdlKelCopyFile::remove(3);
    QCOMPARE(mdlKelCopyFile::add(object), 1);
    mdlKelCopyFile::remove(1);
}

void tst_copy_file_life::progressOfAnUnknownCopyIsDropped()
{
    auto object = std::make_unique<clsKelCopyFile>();
    const auto number = mdlKelCopyFile::add(*object);
    object.reset();
    QCOMPARE(mdlKelCopyFile::CopyProgressRoutine(10, 5, number), 0U);
    QCOMPARE(mdlKelCopyFile::CopyProgressRoutine(10, 10, number + 1), 0U);
    mdlKelCopyFile::remove(number);
}

void tst_copy_file_life::twoObjectsCopyInOneAnother()
{
    CopyScene scene;
    const auto second = scene.folder.path("to/second");
    clsKelCopyFile outer;
    clsKelCopyFile inner;
    CopyWatch watch(outer);
    bool innerSucceeded = false;
    atFirstPercent(outer,
                   [&] { innerSucceeded = inner.CopyFile(scene.source, second, true, true); });
    QVERIFY(outer.CopyFile(scene.source, scene.destination, true, true));
    QVERIFY(innerSucceeded);
    QCOMPARE(contentOf(second), scene.content);
    QCOMPARE(contentOf(scene.destination), scene.content);
    for (const auto &event : watch.events)
        QVERIFY(event.endsWith(scene.destination));
}

void tst_copy_file_life::theObjectMayGoWhileItsCallWaits()
{
    ScriptedCopy copy;
    const QPointer<clsKelCopyFile> object(new clsKelCopyFile(copy));
    QTimer::singleShot(0, this, [object] { delete object; });
    QVERIFY(!object->CopyFile(A, B, true, true));
    QVERIFY(!object);
    QVERIFY(copy.copies.isEmpty());
}

void tst_copy_file_life::theObjectMayGoBeforeTheLaunch()
{
    CountedTimers system;
    ScriptedCopy copy;
    auto object = std::make_unique<clsKelCopyFile>(copy);
    QVERIFY(object->CopyFile(A, B));
    object.reset();
    QVERIFY(system.running.isEmpty());
}

void tst_copy_file_life::theObjectMayGoInAnyEvent_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<bool>("synchronous");
    for (int event = 1; event <= 6; ++event)
        for (const bool synchronous : {false, true})
            QTest::addRow("%d %s", event, synchronous ? "synchronous" : "asynchronous")
                << event << synchronous;
}

void tst_copy_file_life::theObjectMayGoInAnyEvent()
{
    QFETCH(int, event);
    QFETCH(bool, synchronous);
    ScriptedCopy copy;
    const QPointer<clsKelCopyFile> object(new clsKelCopyFile(copy));
    int events = 0;
    const auto count = [&] {
        if (++events == event)
            delete object;
    };
    connect(object, &clsKelCopyFile::FileBegin, this, count);
    connect(object, &clsKelCopyFile::FilePercent, this, count);
    connect(object, &clsKelCopyFile::FileFinished, this, count);
    QCOMPARE(object->CopyFile(A, B, true, synchronous), !synchronous);
    QTRY_VERIFY(!object);
    QCOMPARE(events, event);
}

void tst_copy_file_life::theObjectMayGoDuringTheRealCopy()
{
    CopyScene scene;
    scene.folder.write("to/result.pdf", "old");
    const QPointer<clsKelCopyFile> object(new clsKelCopyFile);
    int events = 0;
    connect(object, &clsKelCopyFile::FilePercent, this, [&] {
        if (++events == 2) // the first is raised before the copy
            delete object;
    });
    QVERIFY(!object->CopyFile(scene.source, scene.destination, true, true));
    QVERIFY(!object);
    QCOMPARE(contentOf(scene.destination), QByteArray("old"));
    QCOMPARE(scene.inFolder().size(), 1);
}

void tst_copy_file_life::theApplicationMayQuitMeanwhile()
{
    CopyScene scene;
    clsKelCopyFile object;
    bool result = false;
    QTimer::singleShot(0, &object, [&] {
        QTimer::singleShot(5, &object, [] { QCoreApplication::quit(); });
        result = object.CopyFile(scene.source, scene.destination, true, true);
    });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(result);
    QCOMPARE(contentOf(scene.destination), scene.content);
}

void tst_copy_file_life::windowsLiveWhileACopyIsAwaited()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    QTimer beat;
    int beats = 0;
    connect(&beat, &QTimer::timeout, this, [&beats] { ++beats; });
    beat.start(1);
    QVERIFY(object.CopyFile(A, B, true, true));
    QVERIFY2(beats > 5, qPrintable(QString::number(beats)));
}

void tst_copy_file_life::awaitingACopyLeavesTheProcessorAlone()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    QElapsedTimer clock;
    clock.start();
    const auto before = std::clock();
    for (int i = 0; i < 10; ++i)
        QVERIFY(object.CopyFile(A, B, true, true));
    const auto busy = 1000 * (std::clock() - before) / CLOCKS_PER_SEC;
    QVERIFY2(busy * 2 < clock.elapsed(), qPrintable(QString::number(busy)));
}

QTEST_GUILESS_MAIN(tst_copy_file_life)
#include "tst_copy_file_life.moc"
