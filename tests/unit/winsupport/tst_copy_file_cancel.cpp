#include "unit/winsupport/CopyScene.h"
#include "unit/winsupport/CopyWatch.h"
#include "unit/winsupport/ScriptedCopy.h"

#include <QRegularExpression>
#include <QTest>
#include <QTimer>

using namespace Quorlin;

namespace {

const QString A = QStringLiteral("/none/a");
const QString B = QStringLiteral("/none/b");

} // namespace

/// What becomes of copies that are cancelled.
class tst_copy_file_cancel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cancelMakesASynchronousCopyReturnFalse();
    void cancelBeforeTheLaunchMakesASynchronousCopyReturnFalse();
    void aCancelledSynchronousCopyCanBeFollowedByAnother();
    void cancelAtTheLastMomentStillReturnsFalse();
    void cancelOfAnAsynchronousCopyFinishesAtOnceAndStaysBusy();
    void cancelOfAnAsynchronousCopyBeforeItsLaunchStillBegins();
    void cancelTwiceFinishesOnce();
    void cancelWithoutACopyDoesNothing();
    void cancelAfterTheEndDoesNothing();
    void theRoutineNeverStopsTheCopy();
};

/// A copy that was cancelled is no failure to report.
void tst_copy_file_cancel::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("was not copied")));
}

void tst_copy_file_cancel::cancelMakesASynchronousCopyReturnFalse()
{
    CopyScene scene;
    scene.folder.write("to/result.pdf", "old");
    clsKelCopyFile object;
    CopyWatch watch(object);
    duringTheCopy(object, [&object] { object.Cancel(); });
    QVERIFY(!object.CopyFile(scene.source, scene.destination, true, true));
    QCOMPARE(watch.events.size(), 3); // FileBegin and 0 twice, no FileFinished
    QCOMPARE(contentOf(scene.destination), QByteArray("old"));
    QCOMPARE(scene.inFolder().size(), 1);
}

void tst_copy_file_cancel::cancelBeforeTheLaunchMakesASynchronousCopyReturnFalse()
{
    CopyScene scene;
    clsKelCopyFile object;
    CopyWatch watch(object);
    QTimer::singleShot(0, &object, &clsKelCopyFile::Cancel);
    QVERIFY(!object.CopyFile(scene.source, scene.destination, true, true));
    // The launch still comes, and its copy finds itself cancelled.
    QTRY_COMPARE(watch.events.size(), 2);
    QVERIFY(scene.inFolder().isEmpty());
}

void tst_copy_file_cancel::aCancelledSynchronousCopyCanBeFollowedByAnother()
{
    CopyScene scene;
    clsKelCopyFile object;
    QTimer::singleShot(0, &object, &clsKelCopyFile::Cancel);
    QVERIFY(!object.CopyFile(scene.source, scene.destination, true, true));
    const auto second = scene.folder.path("to/second");
    QVERIFY(object.CopyFile(scene.source, second, true, true));
    QCOMPARE(scene.inFolder(), QStringList{QStringLiteral("second")});
    QCOMPARE(contentOf(second), scene.content);
}

void tst_copy_file_cancel::cancelAtTheLastMomentStillReturnsFalse()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    copy.script = [&object](const SystemCopy::Progress &progress, const bool &) {
        QTimer::singleShot(0, &object, &clsKelCopyFile::Cancel);
        static_cast<void>(progress(1000, 1000)); // handles the event first
        return true;
    };
    QVERIFY(!object.CopyFile(A, B, true, true));
    QCOMPARE(watch.events.size(), 2);
}

void tst_copy_file_cancel::cancelOfAnAsynchronousCopyFinishesAtOnceAndStaysBusy()
{
    // The busy flag stays after an asynchronous cancel on purpose.
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    qsizetype eventsAtCancel = 0;
    copy.script = [&](const SystemCopy::Progress &progress, const bool &cancel) {
        static_cast<void>(progress(1000, 500));
        object.Cancel();
        eventsAtCancel = watch.events.size();
        return !cancel;
    };
    QVERIFY(object.CopyFile(A, B));
    QTRY_COMPARE(watch.events.size(), 4);
    QCOMPARE(eventsAtCancel, 4);
    QCOMPARE(watch.events.last(), QStringLiteral("finished false /none/a>/none/b"));
    QVERIFY(!object.CopyFile(A, B));
    QVERIFY(!object.CopyFile(A, B, true, true));
    QCOMPARE(copy.copies.size(), 1);
}

void tst_copy_file_cancel::cancelOfAnAsynchronousCopyBeforeItsLaunchStillBegins()
{
    CopyScene scene;
    clsKelCopyFile object;
    CopyWatch watch(object);
    QVERIFY(object.CopyFile(scene.source, scene.destination));
    object.Cancel();
    QCOMPARE(watch.events.size(), 1);
    QTRY_COMPARE(watch.events.size(), 3);
    QVERIFY(watch.events[0].startsWith(QLatin1String("finished false")));
    QVERIFY(watch.events[1].startsWith(QLatin1String("begin")));
    QVERIFY(watch.events[2].startsWith(QLatin1String("0 ")));
    QVERIFY(scene.inFolder().isEmpty());
}

void tst_copy_file_cancel::cancelTwiceFinishesOnce()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    QVERIFY(object.CopyFile(A, B));
    object.Cancel();
    object.Cancel();
    QCOMPARE(watch.events.size(), 1);
}

void tst_copy_file_cancel::cancelWithoutACopyDoesNothing()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    object.Cancel();
    QVERIFY(watch.events.isEmpty());
    QVERIFY(object.CopyFile(A, B, true, true));
}

void tst_copy_file_cancel::cancelAfterTheEndDoesNothing()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    connect(&object, &clsKelCopyFile::FileFinished, &object, &clsKelCopyFile::Cancel);
    QVERIFY(object.CopyFile(A, B));
    QTRY_COMPARE(watch.events.size(), 6);
    object.Cancel();
    QCOMPARE(watch.events.size(), 6);
    QVERIFY(object.CopyFile(A, B, true, true));
}

void tst_copy_file_cancel::theRoutineNeverStopsTheCopy()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    QList<quint32> answers;
    copy.script = [&](const SystemCopy::Progress &progress, const bool &cancel) {
        answers.append(progress(1000, 1));
        object.Cancel();
        answers.append(progress(1000, 2));
        return !cancel;
    };
    QVERIFY(!object.CopyFile(A, B, true, true));
    QCOMPARE(answers, (QList<quint32>{0, 0}));
}

QTEST_GUILESS_MAIN(tst_copy_file_cancel)
#include "tst_copy_file_cancel.moc"
