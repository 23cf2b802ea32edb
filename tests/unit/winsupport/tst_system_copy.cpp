#include "support/SystemActions.h"
#include "unit/winsupport/CopyScene.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QTimer>

#include <algorithm>

using namespace Quorlin;

namespace {

const QByteArray OldContent("the old file");
constexpr int BigBytes = 24 * 1024 * 1024;

QString oldFile(const CopyScene &scene)
{
    return scene.folder.write("to/result.pdf", OldContent);
}

} // namespace

/// What the system's copy makes of good files.
class tst_system_copy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewFileIsMade();
    void anExistingFileIsReplaced();
    void anEmptyFileReportsOnceThatAllIsCopied();
    void theFirstCallReportsThatNothingIsCopied();
    void progressGrowsToTheTotal();
    void theEndIsReportedWhenTheFileIsInPlace();
    void eventsAreHandledMeanwhile();
    void cancelledBeforeTheStart();
    void cancelledByAHandlerAtTheFirstCall();
    void nothingIsReplacedWhileAHandlerMayStillCancel();
    void stoppedByTheCallsAnswer();
    void aNewFileHasUsualPermissions();
    void aReplacedFileKeepsItsPermissions();
    void aReplacedFileKeepsItsOwner();
    void theTimeOfTheLastChangeIsKept();
    void aLinkIsWrittenThrough();
    void aRelativeChainOfLinksIsWrittenThrough();
    void aDanglingLinkGetsItsTarget();
    void aFolderThatCannotBeListedTakesFiles();
    void longestAndForeignNamesAreFine_data();
    void longestAndForeignNamesAreFine();
    void leftOversOfDeadProgramsAreRemoved();
    void copiesUnderWayAreNoLeftOvers();
    void theOtherFileSystemIsFine();
};

void tst_system_copy::aNewFileIsMade()
{
    CopyScene scene;
    const auto outcome = scene.copy();
    QVERIFY2(outcome.success, qPrintable(outcome.text));
    QCOMPARE(outcome.error, 0);
    QCOMPARE(contentOf(scene.destination), scene.content);
    QCOMPARE(scene.inFolder(), QStringList{QStringLiteral("result.pdf")});
    QCOMPARE(contentOf(scene.source), scene.content);
}

void tst_system_copy::anExistingFileIsReplaced()
{
    CopyScene scene;
    scene.folder.write("to/result.pdf", scene.content.repeated(3));
    QVERIFY(scene.copy().success);
    QCOMPARE(contentOf(scene.destination), scene.content);
    QCOMPARE(scene.inFolder().size(), 1);
}

void tst_system_copy::anEmptyFileReportsOnceThatAllIsCopied()
{
    CopyScene scene;
    const auto empty = scene.folder.write("empty", {});
    QVERIFY(scene.copy(empty, scene.destination).success);
    QCOMPARE(scene.calls, (QList<std::pair<qint64, qint64>>{{0, 0}}));
    QVERIFY(QFileInfo::exists(scene.destination));
    QCOMPARE(QFileInfo(scene.destination).size(), 0);
}

void tst_system_copy::theFirstCallReportsThatNothingIsCopied()
{
    CopyScene scene;
    QVERIFY(scene.copy().success);
    QCOMPARE(scene.calls.first(), std::pair(qint64(scene.content.size()), qint64(0)));
}

void tst_system_copy::progressGrowsToTheTotal()
{
    CopyScene scene;
    const QByteArray big(BigBytes, 'x');
    QVERIFY(scene.copy(scene.folder.write("big", big), scene.destination).success);
    QVERIFY(std::is_sorted(scene.calls.begin(), scene.calls.end()));
    QCOMPARE(scene.calls.last(), std::pair(qint64(BigBytes), qint64(BigBytes)));
    const auto ends = std::count(scene.calls.begin(), scene.calls.end(), scene.calls.last());
    QCOMPARE(ends, 1);
    QCOMPARE(contentOf(scene.destination), big);
}

void tst_system_copy::theEndIsReportedWhenTheFileIsInPlace()
{
    CopyScene scene;
    oldFile(scene);
    QByteArray atTheEnd;
    QStringList names;
    scene.onProgress = [&](qint64 total, qint64 copied) {
        if (copied == total) {
            atTheEnd = contentOf(scene.destination);
            names = scene.inFolder();
        }
        return 0U;
    };
    QVERIFY(scene.copy().success);
    QCOMPARE(atTheEnd, scene.content);
    QCOMPARE(names.size(), 1);
}

void tst_system_copy::eventsAreHandledMeanwhile()
{
    CopyScene scene;
    bool handled = false;
    QTimer::singleShot(0, this, [&handled] { handled = true; });
    QVERIFY(scene.copy().success);
    QVERIFY(handled);
}

void tst_system_copy::cancelledBeforeTheStart()
{
    CopyScene scene;
    oldFile(scene);
    scene.cancel = true;
    const auto outcome = scene.copy();
    QVERIFY(!outcome.success);
    QCOMPARE(outcome.error, numberOf(std::errc::operation_canceled));
    QVERIFY(scene.calls.isEmpty());
    QCOMPARE(contentOf(scene.destination), OldContent);
    QCOMPARE(scene.inFolder().size(), 1);
}

void tst_system_copy::cancelledByAHandlerAtTheFirstCall()
{
    CopyScene scene;
    oldFile(scene);
    scene.onProgress = [&](qint64, qint64) {
        scene.cancel = true;
        return 0U;
    };
    QVERIFY(!scene.copy().success);
    QCOMPARE(scene.calls.size(), 1);
    QCOMPARE(contentOf(scene.destination), OldContent);
    QCOMPARE(scene.inFolder().size(), 1);
}

void tst_system_copy::nothingIsReplacedWhileAHandlerMayStillCancel()
{
    CopyScene scene;
    oldFile(scene);
    bool replaced = false;
    scene.onProgress = [&](qint64, qint64) {
        const auto isReplaced = [&] { return contentOf(scene.destination) != OldContent; };
        replaced = QTest::qWaitFor(isReplaced, 300);
        scene.cancel = true;
        return 0U;
    };
    QVERIFY(!scene.copy().success);
    QVERIFY(!replaced);
    QCOMPARE(contentOf(scene.destination), OldContent);
}

void tst_system_copy::stoppedByTheCallsAnswer()
{
    CopyScene scene;
    scene.onProgress = [](qint64, qint64) { return 1U; };
    const auto outcome = scene.copy();
    QCOMPARE(outcome.error, numberOf(std::errc::operation_canceled));
    QVERIFY(scene.inFolder().isEmpty());
}

void tst_system_copy::aNewFileHasUsualPermissions()
{
    CopyScene scene;
    const auto usual = SystemActions::modeOf(scene.folder.write("usual", "x"));
    QVERIFY(QFile::setPermissions(scene.source, QFile::ReadOwner));
    QVERIFY(scene.copy().success);
    QCOMPARE(SystemActions::modeOf(scene.destination), usual);
}

void tst_system_copy::aReplacedFileKeepsItsPermissions()
{
    CopyScene scene;
    const auto wanted = QFile::ReadOwner | QFile::WriteOwner | QFile::WriteOther;
    QVERIFY(QFile::setPermissions(oldFile(scene), wanted));
    QVERIFY(scene.copy().success);
    QCOMPARE(SystemActions::modeOf(scene.destination), 0602);
    QCOMPARE(contentOf(scene.destination), scene.content);
}

void tst_system_copy::aReplacedFileKeepsItsOwner()
{
    CopyScene scene;
    const QFile::Permissions all(0x7777);
    QVERIFY(QFile::setPermissions(scene.folder.path(), all));
    QVERIFY(QFile::setPermissions(scene.target, all));
    {
        const OrdinaryUser user;
        oldFile(scene);
    }
    const auto owner = QFileInfo(scene.destination).ownerId();
    QVERIFY(scene.copy().success);
    QCOMPARE(QFileInfo(scene.destination).ownerId(), owner);
    QCOMPARE(contentOf(scene.destination), scene.content);
}

void tst_system_copy::theTimeOfTheLastChangeIsKept()
{
    CopyScene scene;
    const auto time = QDateTime::fromSecsSinceEpoch(1'000'000'000);
    QFile file(scene.source);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    file.close();
    QVERIFY(scene.copy().success);
    QCOMPARE(QFileInfo(scene.destination).lastModified(), time);
}

void tst_system_copy::aLinkIsWrittenThrough()
{
    CopyScene scene;
    const auto real = scene.folder.write("elsewhere/real.pdf", OldContent);
    QVERIFY(QFile::link(real, scene.destination));
    QVERIFY(scene.copy().success);
    QVERIFY(QFileInfo(scene.destination).isSymLink());
    QCOMPARE(contentOf(real), scene.content);
    QCOMPARE(namesIn(scene.folder.path("elsewhere")).size(), 1);
}

void tst_system_copy::aRelativeChainOfLinksIsWrittenThrough()
{
    CopyScene scene;
    const auto real = scene.folder.write("elsewhere/real.pdf", OldContent);
    QVERIFY(QFile::link(QStringLiteral("real.pdf"), scene.folder.path("elsewhere/second")));
    QVERIFY(QFile::link(QStringLiteral("../elsewhere/second"), scene.destination));
    QVERIFY(scene.copy().success);
    QCOMPARE(contentOf(real), scene.content);
    QVERIFY(QFileInfo(scene.folder.path("elsewhere/second")).isSymLink());
}

void tst_system_copy::aDanglingLinkGetsItsTarget()
{
    CopyScene scene;
    QVERIFY(QFile::link(QStringLiteral("../new.pdf"), scene.destination));
    QVERIFY(scene.copy().success);
    QVERIFY(QFileInfo(scene.destination).isSymLink());
    QCOMPARE(contentOf(scene.folder.path("new.pdf")), scene.content);
}

void tst_system_copy::aFolderThatCannotBeListedTakesFiles()
{
    CopyScene scene;
    QVERIFY(QFile::setPermissions(scene.folder.path(), QFile::Permissions(0x7777)));
    QVERIFY(QFile::setPermissions(scene.target, QFile::Permissions(0x3333)));
    SystemCopy::Outcome outcome;
    {
        const OrdinaryUser user;
        outcome = scene.copy();
    }
    QVERIFY2(outcome.success, qPrintable(outcome.text));
    QCOMPARE(contentOf(scene.destination), scene.content);
}

void tst_system_copy::longestAndForeignNamesAreFine_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("longest") << QString(255, QLatin1Char('n'));
    QTest::newRow("foreign") << QStringLiteral("отчёт 報告 \"'\\\n*?.pdf");
    QTest::newRow("hidden") << QStringLiteral(".quorlin-.part");
    QTest::newRow("option") << QStringLiteral("--help");
}

void tst_system_copy::longestAndForeignNamesAreFine()
{
    QFETCH(QString, name);
    CopyScene scene;
    const auto path = scene.target + QLatin1Char('/') + name;
    QVERIFY(scene.copy(scene.source, path).success);
    QVERIFY(scene.copy(scene.source, path).success);
    QCOMPARE(contentOf(path), scene.content);
    QCOMPARE(scene.inFolder(), QStringList{name});
}

void tst_system_copy::leftOversOfDeadProgramsAreRemoved()
{
    CopyScene scene;
    scene.folder.write("to/.quorlin-0123456789abcdef.part", "half");
    const auto other = scene.folder.write("to/.quorlin-mine.part", "kept");
    const auto folder = scene.folder.makeFolder("to/.quorlin-0123456789abcde0.part");
    QVERIFY(scene.copy().success);
    QCOMPARE(scene.inFolder(),
             (QStringList{QFileInfo(folder).fileName(), QFileInfo(other).fileName(),
                          QStringLiteral("result.pdf")}));
}

void tst_system_copy::copiesUnderWayAreNoLeftOvers()
{
    CopyScene scene;
    const auto second = scene.folder.path("to/second.pdf");
    bool secondSucceeded = false;
    scene.onProgress = [&](qint64, qint64 copied) {
        if (copied == 0 && scene.calls.size() == 1)
            secondSucceeded = scene.copy(scene.source, second).success;
        return 0U;
    };
    QVERIFY(scene.copy().success);
    QVERIFY(secondSucceeded);
    QCOMPARE(contentOf(scene.destination), scene.content);
    QCOMPARE(contentOf(second), scene.content);
    QCOMPARE(scene.inFolder().size(), 2);
}

void tst_system_copy::theOtherFileSystemIsFine()
{
    CopyScene scene;
    const auto other = SystemActions::folderOnOtherFileSystem(scene.folder.path());
    if (other.isEmpty())
        QSKIP("there is no other file system to write to");
    CopyScene elsewhere(other);
    const QByteArray big(BigBytes / 3, 'y');
    QVERIFY(scene.copy(scene.folder.write("big", big), elsewhere.destination).success);
    QCOMPARE(contentOf(elsewhere.destination), big);
    QVERIFY(scene.copy(elsewhere.destination, scene.destination).success);
    QCOMPARE(contentOf(scene.destination), big);
}

QTEST_GUILESS_MAIN(tst_system_copy)
#include "tst_system_copy.moc"
