#include "unit/winsupport/CopyScene.h"
#include "unit/winsupport/CopyWatch.h"
#include "unit/winsupport/CountedTimers.h"
#include "unit/winsupport/ScriptedCopy.h"
#include "winsupport/mdlKelCopyFile.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <ctime>
#include <memory>

using namespace Quorlin;

namespace {

const QString A = QStringLiteral("/none/a");
const QString B = QStringLiteral("/none/b");

} // namespace

/// Copies that run in one another, and objects that end while they copy.
class tst_copy_file_life : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersStartAgainWhenNoCopyRuns();
    void progressOfAnUnknownCopyIsDropped();
    void twoObjectsCopyInOneAnother();
    void twoRealCopiesRunInOneAnother();
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

/// The outer copy reports also while the inner one runs.
void tst_copy_file_life::twoObjectsCopyInOneAnother()
{
    ScriptedCopy outerCopy;
    ScriptedCopy innerCopy;
    clsKelCopyFile outer(outerCopy);
    clsKelCopyFile inner(innerCopy);
    CopyWatch outerWatch(outer);
    CopyWatch innerWatch(inner);
    QList<quint32> answers;
    outerCopy.script = [&](const SystemCopy::Progress &progress, const bool &) {
        innerCopy.script = [&](const SystemCopy::Progress &innerProgress, const bool &) {
            answers.append(innerProgress(1000, 300));
            answers.append(progress(1000, 700));
            answers.append(innerProgress(1000, 1000));
            return true;
        };
        answers.append(progress(1000, 500));
        const bool innerSucceeded = inner.CopyFile(B, A, true, true);
        answers.append(progress(1000, 1000));
        return innerSucceeded;
    };
    QVERIFY(outer.CopyFile(A, B, true, true));
    QCOMPARE(answers, QList<quint32>(5, 0));
    QCOMPARE(outerWatch.events.join(QLatin1Char('|')),
             QStringLiteral("begin /none/a>/none/b|0 /none/a>/none/b|50 /none/a>/none/b|"
                            "70 /none/a>/none/b|100 /none/a>/none/b|"
                            "finished true /none/a>/none/b"));
    QCOMPARE(innerWatch.events.join(QLatin1Char('|')),
             QStringLiteral("begin /none/b>/none/a|0 /none/b>/none/a|30 /none/b>/none/a|"
                            "100 /none/b>/none/a|finished true /none/b>/none/a"));
}

void tst_copy_file_life::twoRealCopiesRunInOneAnother()
{
    CopyScene scene;
    const auto second = scene.folder.path("to/second");
    clsKelCopyFile outer;
    clsKelCopyFile inner;
    bool innerSucceeded = false;
    duringTheCopy(outer,
                  [&] { innerSucceeded = inner.CopyFile(scene.source, second, true, true); });
    QVERIFY(outer.CopyFile(scene.source, scene.destination, true, true));
    QVERIFY(innerSucceeded);
    QCOMPARE(contentOf(second), scene.content);
    QCOMPARE(contentOf(scene.destination), scene.content);
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
    duringTheCopy(*object, [object] { delete object; });
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
    copy.script = [&beats](const SystemCopy::Progress &progress, const bool &) {
        const QDeadlineTimer deadline(20000);
        while (beats < 6 && !deadline.hasExpired())
            static_cast<void>(progress(1000, 500));
        return beats >= 6;
    };
    beat.start(1);
    QVERIFY(object.CopyFile(A, B, true, true));
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
