#include "ui/DocumentIntake.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"
#include "ui/CommandItems.h"
#include "ui/DocumentList.h"
#include "ui/FileList.h"
#include "unit/ui/KeptDocuments.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QUrl>

using namespace Quorlin;

class TestDocumentIntake : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCommandTextIsTakenFromLeftToRight();
    void aCommaAtTheEndYieldsALastEmptyItem();
    void aPathWithSpacesIsOneItem();
    void aPathWithACommaIsSplit();
    void quotesAreNotUnderstood();
    void anEmptyTextHasNoItems();
    void filesOfAFolderComeBeforeThoseOfSubFolders();
    void onlyAcceptableFilesOfAFolderAreTaken();
    void lockFilesAreNotTaken();
    void theSameFileDroppedTwiceIsInTheListTwice();
    void whatIsAskedFirstComesFirst();
    void aLoopOfLinksEnds();
    void aFolderThatMayNotBeReadIsSkipped();
    void aFileThatIsNotThereIsRefusedSilently();
    void otherRefusalsAreSilent();
    void aPostScriptFileThatIsNoneIsTold();
    void refusalsComeInTheirPlace();
    void pipesAndDevicesAreRefusedAtOnce();
    void aResourceOfTheProgramIsNoDocument();
    void strangePathsAreRefused_data();
    void strangePathsAreRefused();
    void aRelativePathBecomesFull();
};

void TestDocumentIntake::aCommandTextIsTakenFromLeftToRight()
{
    const TestFolder folder;
    const auto b = folder.write("b.doc", "text");
    const auto a = folder.write("a.xls", "text");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add(CommandItems::split(b + QLatin1Char(',') + a));
    QCOMPARE(kept.documents(), QStringList({b, a}));
    QCOMPARE(CommandItems::split(QStringLiteral("a.doc,b.xls")),
             QStringList({QStringLiteral("a.doc"), QStringLiteral("b.xls")}));
}

void TestDocumentIntake::aCommaAtTheEndYieldsALastEmptyItem()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    const auto items = CommandItems::split(a + QLatin1Char(','));
    QCOMPARE(items, QStringList({a, QString()}));
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add(items);
    QCOMPARE(kept.documents(), QStringList(a));
}

void TestDocumentIntake::aPathWithSpacesIsOneItem()
{
    const TestFolder folder;
    const auto path = folder.write("my folder/the annual report.doc", "text");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add(CommandItems::split(path));
    QCOMPARE(kept.documents(), QStringList(path));
}

/// There is no quoting: the file exists and is not found nevertheless.
void TestDocumentIntake::aPathWithACommaIsSplit()
{
    const TestFolder folder;
    const auto path = folder.write("one,two.doc", "text");
    QCOMPARE(CommandItems::split(path),
             QStringList({folder.path("one"), QStringLiteral("two.doc")}));
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add(CommandItems::split(path));
    QVERIFY(kept.documents().isEmpty());
}

void TestDocumentIntake::quotesAreNotUnderstood()
{
    QCOMPARE(CommandItems::split(QStringLiteral("\"a,b\"")),
             QStringList({QStringLiteral("\"a"), QStringLiteral("b\"")}));
    QCOMPARE(CommandItems::split(QStringLiteral(" a , b ")),
             QStringList({QStringLiteral(" a "), QStringLiteral(" b ")}));
}

void TestDocumentIntake::anEmptyTextHasNoItems()
{
    QVERIFY(CommandItems::split(QString()).isEmpty());
    QCOMPARE(CommandItems::split(QStringLiteral(",")), QStringList({QString(), QString()}));
}

void TestDocumentIntake::filesOfAFolderComeBeforeThoseOfSubFolders()
{
    const TestFolder folder;
    const auto inner = folder.write("a/inner.doc", "text");
    const auto deep = folder.write("a/sub/deep.doc", "text");
    const auto outer = folder.write("z.doc", "text");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.path()});
    QCOMPARE(kept.documents(), QStringList({outer, inner, deep}));
}

void TestDocumentIntake::onlyAcceptableFilesOfAFolderAreTaken()
{
    const TestFolder folder;
    const auto good = folder.write("sub/a.docx", "text");
    folder.write("sub/empty.docx", "");
    folder.write("sub/program.exe", "text");
    folder.write("sub/.hidden.docx", "text");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.path()});
    QCOMPARE(kept.documents(), QStringList(good));
}

void TestDocumentIntake::lockFilesAreNotTaken()
{
    const TestFolder folder;
    const auto document = folder.write("report.docx", "text");
    const auto lock = folder.write("~$report.docx", "user");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.path(), lock});
    QCOMPARE(kept.documents(), QStringList(document));
}

void TestDocumentIntake::theSameFileDroppedTwiceIsInTheListTwice()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    FileList visible;
    DocumentList documents(visible);
    DocumentIntake intake;
    connect(&visible, &FileList::filesDropped, &intake, &DocumentIntake::add);
    connect(&intake, &DocumentIntake::documentsAccepted, &documents, &DocumentList::addDocuments);
    Q_EMIT visible.filesDropped({a});
    Q_EMIT visible.filesDropped({a});
    QTRY_VERIFY(!intake.isBusy());
    QCOMPARE(documents.DocFullNameList(), QStringList({a, a}));
    QCOMPARE(visible.count(), 2);
}

void TestDocumentIntake::whatIsAskedFirstComesFirst()
{
    const TestFolder folder;
    QStringList expected;
    for (int number = 1; number <= 700; ++number)
        expected.append(
            folder.write(qUtf8Printable(QStringLiteral("f/%1.txt").arg(number)), "text"));
    expected.append(folder.write("single.txt", "text"));
    expected.append(expected.first());
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.path("f")});
    intake.add({folder.path("single.txt"), expected.first()});
    QCOMPARE(kept.documents(), expected);
}

void TestDocumentIntake::aLoopOfLinksEnds()
{
    const TestFolder folder;
    const auto a = folder.write("sub/a.doc", "text");
    QVERIFY(QFile::link(folder.path(), folder.path("sub/loop")));
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.path()});
    QCOMPARE(kept.documents(), QStringList(a));
}

void TestDocumentIntake::aFolderThatMayNotBeReadIsSkipped()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    folder.write("locked/b.doc", "text");
    QVERIFY(QFile::setPermissions(folder.path("locked"), QFile::WriteOwner));
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.path(), folder.path("locked"), folder.path("locked/b.doc")});
    QCOMPARE(kept.documents(), QStringList(a));
}

void TestDocumentIntake::aFileThatIsNotThereIsRefusedSilently()
{
    const TestFolder folder;
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.path("none.doc"), folder.path("none.ps"), folder.path("no/folder")});
    QVERIFY(kept.documents().isEmpty());
    QCOMPARE(kept.idle(), 1);
}

void TestDocumentIntake::otherRefusalsAreSilent()
{
    const TestFolder folder;
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add(
        {folder.write("a.exe", "text"), folder.write("empty.ps", ""), folder.makeFolder("empty")});
    QVERIFY(kept.documents().isEmpty());
    QVERIFY(kept.refused().isEmpty());
}

void TestDocumentIntake::aPostScriptFileThatIsNoneIsTold()
{
    const TestFolder folder;
    const auto named = folder.write("named.prn", "no PostScript");
    const auto found = folder.write("folder/found.ps", "no PostScript");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({named, folder.path("folder"), folder.write("good.ps", "%!PS\n")});
    QCOMPARE(kept.documents().last(), folder.path("good.ps"));
    QCOMPARE(kept.refused(), QStringList({named, found}));
}

void TestDocumentIntake::refusalsComeInTheirPlace()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    const auto b = folder.write("b.doc", "text");
    const auto bad = folder.write("bad.ps", "no PostScript");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({a, bad, bad, b});
    const auto refused = QStringLiteral("refused");
    QCOMPARE(kept.documents(), QStringList({a, refused, refused, b}));
}

void TestDocumentIntake::pipesAndDevicesAreRefusedAtOnce()
{
    const TestFolder folder;
    const auto pipe = folder.path("pipe.ps");
    QVERIFY(SystemActions::makeFifo(pipe));
    QVERIFY(QFile::link(SystemActions::nullDevice(), folder.path("device.ps")));
    const auto a = folder.write("a.doc", "text");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({pipe, folder.path("device.ps"), folder.path(), a});
    QCOMPARE(kept.documents(), QStringList({a, a}));
}

void TestDocumentIntake::aResourceOfTheProgramIsNoDocument()
{
    QVERIFY(QFileInfo(QStringLiteral(":/quorlin/quorlin.svg")).exists());
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({QStringLiteral(":/quorlin/quorlin.svg"), QStringLiteral("qrc:/quorlin/quorlin.svg"),
                QStringLiteral(":/quorlin")});
    QVERIFY(kept.documents().isEmpty());
}

void TestDocumentIntake::strangePathsAreRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("long name") << QString(QStringLiteral("/") + QString(100'000, u'x') +
                                          QStringLiteral(".doc"));
    QTest::newRow("deep path") << QString(QStringLiteral("/tmp/..").repeated(2000) +
                                          QStringLiteral("/a.doc"));
    QTest::newRow("zero byte") << QString(QStringLiteral("/a") + QChar(0) + QStringLiteral(".doc"));
    QTest::newRow("half a character")
        << QString(QStringLiteral("/a") + QChar(0xd800) + QStringLiteral(".doc"));
    QTest::newRow("not UTF-8") << QUrl(QStringLiteral("file:///a%ff%fe.doc")).toLocalFile();
    QTest::newRow("blanks") << QStringLiteral("   ");
    QTest::newRow("wildcards") << QStringLiteral("/*/*.doc");
}

void TestDocumentIntake::strangePathsAreRefused()
{
    QFETCH(const QString, path);
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({path});
    QVERIFY(kept.documents().isEmpty());
    QCOMPARE(kept.idle(), 1);
}

void TestDocumentIntake::aRelativePathBecomesFull()
{
    const TestFolder folder;
    const auto a = folder.write("sub/a.doc", "text");
    const auto before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({QStringLiteral("sub/a.doc"), QStringLiteral("sub")});
    const auto found = kept.documents();
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(found, QStringList({a, a}));
}

QTEST_MAIN(TestDocumentIntake)
#include "tst_document_intake.moc"
