#include "unit/winsupport/CopyScene.h"
#include "unit/winsupport/CopyWatch.h"
#include "unit/winsupport/CountedTimers.h"
#include "unit/winsupport/ScriptedCopy.h"
#include "winsupport/mdlKelCopyFile.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <array>

using namespace Quorlin;

namespace {

const QString A = QStringLiteral("/none/a");
const QString B = QStringLiteral("/none/b");

/// One whose file test sees the destination, as it would without its fault.
class SeeingCopyFile : public clsKelCopyFile
{
public:
    using clsKelCopyFile::clsKelCopyFile;
    using clsKelCopyFile::deleteFile;
    using clsKelCopyFile::folderTest;

    [[nodiscard]] bool fileTest(const QString &name) const override
    {
        return sees ? QFile::exists(name) : clsKelCopyFile::fileTest(name);
    }

    bool sees = false;
};

/// The log must name the file and why it was not copied.
void expectWarning(const QString &source, const char *reason)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QRegularExpression::escape(source) +
                                                          QStringLiteral(" was not copied to .*") +
                                                          QString::fromUtf8(reason)));
}

} // namespace

/// What the copy object makes of its system's copy, and with the real one.
class tst_copy_file : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSynchronousCopyReturnsWhenItHasEnded();
    void anAsynchronousCopyReturnsAtOnce();
    void theCopyBeginsFiftyMillisecondsLater();
    void eventsComeInOrder();
    void anEmptyFileReportsAHundredAndSuccess();
    void anExistingDestinationIsReplacedWithoutOverwrite();
    void aSecondCopyIsRefusedWhileOneRuns();
    void aCopyIsRefusedFromTheEventOfAnAsynchronousEnd();
    void anAsynchronousEndClearsTheBusyFlag();
    void aFailedAsynchronousCopyFinishesAndClearsTheBusyFlag();
    void aFailedSynchronousCopyOnlyReturnsFalse();
    void aWriteProtectedDestinationFails();
    void theFileTestSeesNoExistingFile();
    void anExistingFileIsNeverDeletedBeforehand();
    void aDestinationThatIsSeenIsRefusedForGood();
    void aDestinationThatIsSeenIsDeletedForOverwrite();
    void percentsAreRoundedHalvesToEven_data();
    void percentsAreRoundedHalvesToEven();
    void aSystemWithoutTimersFailsTheCopy();
    void aFullTableOfTimersFailsTheCopy();
};

void tst_copy_file::aSynchronousCopyReturnsWhenItHasEnded()
{
    CopyScene scene;
    clsKelCopyFile object;
    QVERIFY(object.CopyFile(scene.source, scene.destination, true, true));
    QCOMPARE(contentOf(scene.destination), scene.content);
    QVERIFY(object.CopyFile(scene.source, scene.folder.path("to/second"), true, true));
}

void tst_copy_file::anAsynchronousCopyReturnsAtOnce()
{
    CopyScene scene;
    clsKelCopyFile object;
    CopyWatch watch(object);
    QVERIFY(object.CopyFile(scene.source, scene.destination));
    QVERIFY(watch.events.isEmpty());
    QVERIFY(!QFile::exists(scene.destination));
    QTRY_VERIFY(!watch.events.isEmpty() && watch.events.last().startsWith(QLatin1String("fin")));
    QCOMPARE(contentOf(scene.destination), scene.content);
}

void tst_copy_file::theCopyBeginsFiftyMillisecondsLater()
{
    CountedTimers system;
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    QVERIFY(object.CopyFile(A, B));
    QCOMPARE(system.started, QList<qint32>{50});
    QVERIFY(copy.copies.isEmpty());
    system.tick(system.running.firstKey());
    QCOMPARE(copy.copies, QStringList{QStringLiteral("/none/a>/none/b")});
    QVERIFY(system.running.isEmpty());
}

void tst_copy_file::eventsComeInOrder()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    QVERIFY(object.CopyFile(A, B, true, true));
    QCOMPARE(
        watch.events,
        (QStringList{QStringLiteral("begin /none/a>/none/b"), QStringLiteral("0 /none/a>/none/b"),
                     QStringLiteral("0 /none/a>/none/b"), QStringLiteral("50 /none/a>/none/b"),
                     QStringLiteral("100 /none/a>/none/b"),
                     QStringLiteral("finished true /none/a>/none/b")}));
}

void tst_copy_file::anEmptyFileReportsAHundredAndSuccess()
{
    CopyScene scene;
    const auto empty = scene.folder.write("empty", {});
    clsKelCopyFile object;
    CopyWatch watch(object);
    QVERIFY(object.CopyFile(empty, scene.destination, false, true));
    const auto files = QLatin1Char(' ') + empty + QLatin1Char('>') + scene.destination;
    QCOMPARE(watch.events,
             (QStringList{QStringLiteral("begin") + files, QStringLiteral("0") + files,
                          QStringLiteral("100") + files, QStringLiteral("finished true") + files}));
    QVERIFY(QFile::exists(scene.destination));
}

void tst_copy_file::anExistingDestinationIsReplacedWithoutOverwrite()
{
    // The file test does not see the old file, so that nobody minds it.
    CopyScene scene;
    scene.folder.write("to/result.pdf", "old");
    clsKelCopyFile object;
    QVERIFY(object.CopyFile(scene.source, scene.destination, false, true));
    QCOMPARE(contentOf(scene.destination), scene.content);
}

void tst_copy_file::aSecondCopyIsRefusedWhileOneRuns()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    QList<bool> answers;
    for (const int delay : {0, 1})
        QTimer::singleShot(delay, &object, [&] {
            answers.append(object.CopyFile(A, B));
            answers.append(object.CopyFile(A, B, true, true));
        });
    duringTheCopy(object, [&] { answers.append(object.CopyFile(A, B, true, true)); });
    QVERIFY(object.CopyFile(A, B, true, true));
    QCOMPARE(answers, QList<bool>(5, false));
    QCOMPARE(copy.copies.size(), 1);
}

void tst_copy_file::aCopyIsRefusedFromTheEventOfAnAsynchronousEnd()
{
    // The busy flag goes only after the event.
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    QList<bool> answers;
    connect(&object, &clsKelCopyFile::FileFinished, &object,
            [&] { answers.append(object.CopyFile(A, B)); });
    QVERIFY(object.CopyFile(A, B));
    QTRY_COMPARE(answers, QList<bool>{false});
}

void tst_copy_file::anAsynchronousEndClearsTheBusyFlag()
{
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    QVERIFY(object.CopyFile(A, B));
    QTRY_COMPARE(watch.events.size(), 6);
    QVERIFY(object.CopyFile(A, B, true, true));
}

void tst_copy_file::aFailedAsynchronousCopyFinishesAndClearsTheBusyFlag()
{
    CopyScene scene;
    clsKelCopyFile object;
    CopyWatch watch(object);
    expectWarning(scene.folder.path("none"), "the source cannot be found: .* \\(error 2\\)");
    QVERIFY(object.CopyFile(scene.folder.path("none"), scene.destination));
    QTRY_COMPARE(watch.events.size(), 3);
    QVERIFY(watch.events.last().startsWith(QLatin1String("finished false")));
    QVERIFY(object.CopyFile(scene.source, scene.destination, true, true));
}

void tst_copy_file::aFailedSynchronousCopyOnlyReturnsFalse()
{
    CopyScene scene;
    clsKelCopyFile object;
    CopyWatch watch(object);
    expectWarning(scene.folder.path("none"), "the source cannot be found");
    QVERIFY(!object.CopyFile(scene.folder.path("none"), scene.destination, true, true));
    QCOMPARE(watch.events.size(), 2);
    QVERIFY(object.CopyFile(scene.source, scene.destination, true, true));
}

void tst_copy_file::aWriteProtectedDestinationFails()
{
    CopyScene scene;
    const auto old = scene.folder.write("to/result.pdf", "old");
    QVERIFY(QFile::setPermissions(old, QFile::ReadOwner));
    clsKelCopyFile object;
    expectWarning(scene.source, "write-protected");
    QVERIFY(!object.CopyFile(scene.source, scene.destination, true, true));
    QCOMPARE(contentOf(scene.destination), QByteArray("old"));
    QVERIFY(object.CopyFile(scene.source, scene.folder.path("to/other"), true, true));
}

void tst_copy_file::theFileTestSeesNoExistingFile()
{
    // A listing with folders lists files too; the test is wrong on purpose.
    const TestFolder folder;
    SeeingCopyFile object;
    QVERIFY(object.folderTest(folder.path()));
    QVERIFY(object.folderTest(folder.write("file", "x")));
    QVERIFY(!object.folderTest(folder.path("none")));
    for (const char *name : {"file", "none", "."})
        QVERIFY(!object.fileTest(folder.path(name)));
}

void tst_copy_file::anExistingFileIsNeverDeletedBeforehand()
{
    CopyScene scene;
    scene.folder.write("to/result.pdf", "old");
    ScriptedCopy copy;
    copy.script = [](const SystemCopy::Progress &, const bool &) { return false; };
    SeeingCopyFile object(copy);
    QVERIFY(!object.deleteFile(scene.destination));
    expectWarning(scene.source, "as scripted \\(error 5\\)");
    QVERIFY(!object.CopyFile(scene.source, scene.destination, true, true));
    QCOMPARE(contentOf(scene.destination), QByteArray("old"));
}

void tst_copy_file::aDestinationThatIsSeenIsRefusedForGood()
{
    // The busy flag stays on purpose after a destination that may not be replaced.
    CopyScene scene;
    scene.folder.write("to/result.pdf", "old");
    ScriptedCopy copy;
    SeeingCopyFile object(copy);
    object.sees = true;
    QVERIFY(!object.CopyFile(scene.source, scene.destination));
    QVERIFY(!object.CopyFile(scene.source, scene.folder.path("to/other"), true, true));
    QVERIFY(copy.copies.isEmpty());
    QCOMPARE(contentOf(scene.destination), QByteArray("old"));
}

void tst_copy_file::aDestinationThatIsSeenIsDeletedForOverwrite()
{
    CopyScene scene;
    scene.folder.write("to/result.pdf", "old");
    ScriptedCopy copy;
    SeeingCopyFile object(copy);
    object.sees = true;
    QVERIFY(object.CopyFile(scene.source, scene.destination, true, true));
    QVERIFY(!QFile::exists(scene.destination));
}

void tst_copy_file::percentsAreRoundedHalvesToEven_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("copied");
    QTest::addColumn<qint16>("percent");
    QTest::newRow("nothing") << qint64(7) << qint64(0) << qint16(0);
    QTest::newRow("half to even below") << qint64(200) << qint64(1) << qint16(0);
    QTest::newRow("half to even above") << qint64(200) << qint64(3) << qint16(2);
    QTest::newRow("2.5") << qint64(200) << qint64(5) << qint16(2);
    QTest::newRow("99.5") << qint64(200) << qint64(199) << qint16(100);
    QTest::newRow("less than half") << qint64(1000) << qint64(14) << qint16(1);
    QTest::newRow("more than half") << qint64(1000) << qint64(16) << qint16(2);
    QTest::newRow("odd total") << qint64(3) << qint64(2) << qint16(67);
    QTest::newRow("large") << (qint64(1) << 50) << (qint64(1) << 49) << qint16(50);
}

void tst_copy_file::percentsAreRoundedHalvesToEven()
{
    QFETCH(qint64, total);
    QFETCH(qint64, copied);
    QFETCH(qint16, percent);
    QCOMPARE(mdlKelCopyFile::percentOf(total, copied), percent);
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    copy.script = [=](const SystemCopy::Progress &progress, const bool &) {
        return progress(total, copied) == 0;
    };
    QVERIFY(object.CopyFile(A, B, true, true));
    QCOMPARE(watch.events.last(), QString::number(percent) + QStringLiteral(" /none/a>/none/b"));
}

void tst_copy_file::aSystemWithoutTimersFailsTheCopy()
{
    CountedTimers system;
    system.refuse = true;
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    CopyWatch watch(object);
    QVERIFY(!object.CopyFile(A, B));
    QVERIFY(!object.CopyFile(A, B, true, true));
    QVERIFY(watch.events.isEmpty());
    system.refuse = false;
    QVERIFY(object.CopyFile(A, B));
}

void tst_copy_file::aFullTableOfTimersFailsTheCopy()
{
    CountedTimers system;
    ScriptedCopy copy;
    clsKelCopyFile object(copy);
    {
        std::array<CTimer, 100> others;
        for (auto &timer : others)
            timer.Interval(1000);
        QVERIFY(!object.CopyFile(A, B));
        QVERIFY(!object.CopyFile(A, B, true, true));
    }
    QVERIFY(object.CopyFile(A, B));
}

QTEST_GUILESS_MAIN(tst_copy_file)
#include "tst_copy_file.moc"
