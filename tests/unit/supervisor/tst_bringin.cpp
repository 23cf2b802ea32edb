#include "component/supervisor/BringIn.h"

#include "component/supervisor/ExclusiveFile.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QTest>

#include <memory>

using namespace Quorlin;

class TestBringIn : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<TestFolder>(); }
    void cleanup() { m_folder.reset(); }
    void copiesADocument();
    void refusesWhatIsNoDocument();
    void copiesAnyFileOfOurs();
    void linksAFileOfOursWhereItCan();
    void tellsWhyAFileCannotBeTaken();
    void tellsThatAFileMayNotBeRead();
    void tellsThatThereIsNoRoom();
    void keepsNamesThatAnEngineCanBear_data();
    void keepsNamesThatAnEngineCanBear();
    void givesOtherDocumentsAPlainName_data();
    void givesOtherDocumentsAPlainName();

private:
    std::unique_ptr<TestFolder> m_folder;
};

void TestBringIn::copiesADocument()
{
    const auto from = m_folder->write("a.docx", "content");
    QCOMPARE(BringIn::document(from, m_folder->path("to")), Reason::None);
    QCOMPARE(contentOf(m_folder->path("to")), QByteArray("content"));
    QVERIFY(ExclusiveFile::identityOf(m_folder->path("to")) != ExclusiveFile::identityOf(from));
}

void TestBringIn::refusesWhatIsNoDocument()
{
    const auto to = m_folder->path("to");
    QCOMPARE(BringIn::document(m_folder->path("gone.docx"), to), Reason::NotFound);
    QCOMPARE(BringIn::document(m_folder->write("a.exe", "content"), to), Reason::UnknownFormat);
    QCOMPARE(BringIn::document(m_folder->write("a.docx", ""), to), Reason::Empty);
    QCOMPARE(BringIn::document(m_folder->write("a.ps", "content"), to), Reason::NotPostScript);
    QCOMPARE(BringIn::document(m_folder->makeFolder("b.docx"), to), Reason::NotRegular);
    QVERIFY(ExclusiveFile::identityOf(to).isEmpty());
}

void TestBringIn::copiesAnyFileOfOurs()
{
    QCOMPARE(BringIn::file(m_folder->write("a.ps~", "content"), m_folder->path("to")),
             Reason::None);
    QCOMPARE(contentOf(m_folder->path("to")), QByteArray("content"));
}

void TestBringIn::linksAFileOfOursWhereItCan()
{
    const auto from = m_folder->write("a.ps~", "content");
    QCOMPARE(BringIn::linkedFile(from, m_folder->path("to")), Reason::None);
    QCOMPARE(ExclusiveFile::identityOf(m_folder->path("to")), ExclusiveFile::identityOf(from));
}

void TestBringIn::tellsWhyAFileCannotBeTaken()
{
    QVERIFY(SystemActions::makeFifo(m_folder->path("pipe")));
    const auto to = m_folder->path("to");
    QCOMPARE(BringIn::file(m_folder->path("gone"), to), Reason::NotFound);
    QCOMPARE(BringIn::file(m_folder->path("pipe"), to), Reason::NotRegular);
    QCOMPARE(BringIn::file(m_folder->makeFolder("folder"), to), Reason::NotRegular);
    QCOMPARE(BringIn::file(SystemActions::nullDevice(), to), Reason::NotRegular);
    QCOMPARE(BringIn::linkedFile(m_folder->path("gone"), to), Reason::NotFound);
    QVERIFY(ExclusiveFile::identityOf(to).isEmpty());
}

void TestBringIn::tellsThatAFileMayNotBeRead()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto from = folder.write("a.docx", "content");
    QVERIFY(QFile::setPermissions(from, QFile::WriteOwner));
    QCOMPARE(BringIn::document(from, folder.path("to")), Reason::NotReadable);
    QCOMPARE(BringIn::file(from, folder.path("to")), Reason::NotReadable);
}

void TestBringIn::tellsThatThereIsNoRoom()
{
    const auto folder = m_folder->makeFolder("disk");
    const SmallDisk disk(folder, 64);
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk to fill");
    const auto from = m_folder->write("a.docx", QByteArray(1'000'000, 'x'));
    QCOMPARE(BringIn::document(from, folder + QStringLiteral("/to")), Reason::NoRoom);
    QCOMPARE(namesIn(folder), QStringList());
}

void TestBringIn::keepsNamesThatAnEngineCanBear_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"report.docx", "my report, \"final\" (2).docx", "Übung 文書.odt",
                             "\xf0\x9f\x93\x84.docx", "100%.xls", "#1.ods", ".docx"})
        QTest::newRow(name) << QString::fromUtf8(name);
    QTest::newRow("long") << QString(195, QLatin1Char('x')) + QStringLiteral(".docx");
}

void TestBringIn::keepsNamesThatAnEngineCanBear()
{
    QFETCH(const QString, name);
    QCOMPARE(BringIn::safeName(name), name);
}

void TestBringIn::givesOtherDocumentsAPlainName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("line feed") << QStringLiteral("two\nlines.DOCX");
    QTest::newRow("tabulator") << QStringLiteral("a\tb.docx");
    QTest::newRow("escape") << QStringLiteral("\u001b[31m.docx");
    QTest::newRow("very long") << QString(236, QLatin1Char('x')) + QStringLiteral(".docx");
    QTest::newRow("long in its bytes") << QString(90, QChar(0x6587)) + QStringLiteral(".docx");
}

void TestBringIn::givesOtherDocumentsAPlainName()
{
    QFETCH(const QString, name);
    QCOMPARE(BringIn::safeName(name), QStringLiteral("document.docx"));
}

QTEST_GUILESS_MAIN(TestBringIn)
#include "tst_bringin.moc"
