#include "component/supervisor/Journal.h"

#include "component/protocol/Message.h"
#include "component/supervisor/ExclusiveFile.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QProcess>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds

QByteArray note(const char *word, const QString &path, const QString &identity = {})
{
    return Message::encode({{QLatin1String(word), path}, {QStringLiteral("identity"), identity}});
}

} // namespace

class TestJournal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void makesItsFolder();
    void aClosedJournalLeavesNothing();
    void worksWithoutAJournalThatCannotBeWritten();
    void removesWhatAKilledProcessPlaced();
    void removesACopyThatAKilledProcessHadOnlyBegun();
    void whatWasOnlyPlannedAndNeverMadeIsNoLoss();
    void removesTheWorkingFolderWithAllInIt();
    void keepsAFileOfTheUsersUnderAPlannedName();
    void keepsAFileThatTheUserPutInThePlaceOfOurs();
    void keepsALinkThatTheUserPutInThePlaceOfOurs();
    void leavesTheJournalOfALivingProcessAlone();
    void leavesItsOwnJournalAlone();
    void severalKilledProcessesAreRecovered();
    void nothingIsLeftToRecoverTheSecondTime();
    void damagedLinesAreSkipped();
    void whatCannotBeRemovedNowIsRemovedLater();
    void whatCouldNotBeRemovedAtTheEndIsRemovedByTheNextStart();
    void aJournalNeverLeadsToAFolderOfTheUsers_data();
    void aJournalNeverLeadsToAFolderOfTheUsers();
    void aJournalNeverLeadsToAFileOfTheUsers();

private:
    void startKeeper(const QStringList &what);
    void kill();
    QStringList recover();
    void leaveJournal(const QByteArray &lines);

    std::unique_ptr<TestFolder> m_journals, m_documents, m_temporary;
    std::unique_ptr<QProcess> m_keeper;
    QString m_workFolder;
};

void TestJournal::init()
{
    m_journals = std::make_unique<TestFolder>();
    m_documents = std::make_unique<TestFolder>();
    m_temporary = std::make_unique<TestFolder>();
}

void TestJournal::cleanup()
{
    if (m_keeper)
        kill();
}

/// Starts a process that does this and waits, and lets it come so far.
void TestJournal::startKeeper(const QStringList &what)
{
    m_keeper = std::make_unique<QProcess>();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), m_temporary->path());
    m_keeper->setProcessEnvironment(environment);
    m_keeper->start(QStringLiteral(QUORLIN_JOURNAL_KEEPER),
                    QStringList{m_journals->path(), m_documents->path()} + what);
    while (!m_keeper->canReadLine() && m_keeper->waitForReadyRead(Patience)) {
    }
    QVERIFY(m_keeper->canReadLine());
    m_workFolder = QString::fromUtf8(m_keeper->readLine()).trimmed();
}

void TestJournal::kill()
{
    SystemActions::kill(m_keeper->processId());
    QVERIFY(m_keeper->waitForFinished(Patience));
    m_keeper.reset();
}

QStringList TestJournal::recover()
{
    Journal journal(m_journals->path());
    if (!journal.open())
        return {QStringLiteral("the journal could not be opened")};
    auto removed = journal.recover();
    journal.close();
    removed.sort();
    return removed;
}

/// A journal that nobody holds any more.
void TestJournal::leaveJournal(const QByteArray &lines)
{
    m_journals->write("left.journal", lines);
}

void TestJournal::makesItsFolder()
{
    const auto folder = m_journals->path("new/deep");
    Journal journal(folder);
    QVERIFY(journal.open());
    QCOMPARE(QDir(folder).entryList({QStringLiteral("*.journal")}).size(), 1);
}

void TestJournal::aClosedJournalLeavesNothing()
{
    Journal journal(m_journals->path());
    QVERIFY(journal.open());
    journal.planFolder(m_journals->path("x"));
    journal.close();
    QCOMPARE(m_journals->names(), QStringList());
}

void TestJournal::worksWithoutAJournalThatCannotBeWritten()
{
    const auto file = m_journals->write("file", "in the way");
    Journal journal(file + QStringLiteral("/journals"));
    QVERIFY(!journal.open());
    journal.planFile(m_documents->path("a"), file);
    journal.madeFile(m_documents->path("a"));
    journal.planFolder(m_documents->path("b"));
    QCOMPARE(journal.recover(), QStringList());
    journal.close();
    QCOMPARE(contentOf(file), QByteArray("in the way"));
}

void TestJournal::removesWhatAKilledProcessPlaced()
{
    startKeeper({QStringLiteral("placed")});
    QCOMPARE(contentOf(m_documents->path("report.ps~")), QByteArray("printed"));
    kill();
    QCOMPARE(recover(), QStringList{m_documents->path("report.ps~")});
    QCOMPARE(m_documents->names(), QStringList());
    QCOMPARE(m_journals->names(), QStringList());
}

void TestJournal::removesACopyThatAKilledProcessHadOnlyBegun()
{
    startKeeper({QStringLiteral("begun")});
    kill();
    QCOMPARE(recover(), QStringList{m_documents->path("begun.ps~")});
    QCOMPARE(m_documents->names(), QStringList());
}

void TestJournal::whatWasOnlyPlannedAndNeverMadeIsNoLoss()
{
    startKeeper({QStringLiteral("planned")});
    kill();
    QCOMPARE(recover(), QStringList());
    QCOMPARE(m_journals->names(), QStringList());
}

void TestJournal::removesTheWorkingFolderWithAllInIt()
{
    const auto users = m_documents->write("report.docx", "the user's");
    startKeeper({QStringLiteral("folder")});
    QVERIFY(m_workFolder.startsWith(m_temporary->path()));
    QVERIFY(QFileInfo::exists(m_workFolder + QStringLiteral("/a/b/c/file")));
    kill();
    QCOMPARE(recover(), QStringList{m_workFolder});
    QCOMPARE(m_temporary->names(), QStringList());
    QCOMPARE(contentOf(users), QByteArray("the user's")); // a link led to its folder
}

void TestJournal::keepsAFileOfTheUsersUnderAPlannedName()
{
    startKeeper({QStringLiteral("planned")});
    kill();
    const auto users = m_documents->write("planned.ps~", "the user's");
    QCOMPARE(recover(), QStringList());
    QCOMPARE(contentOf(users), QByteArray("the user's"));
}

void TestJournal::keepsAFileThatTheUserPutInThePlaceOfOurs()
{
    startKeeper({QStringLiteral("placed")});
    kill();
    QVERIFY(QFile::remove(m_documents->path("report.ps~")));
    QTest::qWait(20); // births are told apart from one tick of the clock to the next
    for (const QByteArray content : {"the user's", ""}) {
        const auto users = m_documents->write("report.ps~", content);
        QCOMPARE(recover(), QStringList());
        QVERIFY(QFileInfo::exists(users));
    }
}

void TestJournal::keepsALinkThatTheUserPutInThePlaceOfOurs()
{
    startKeeper({QStringLiteral("placed")});
    kill();
    const auto ours = m_documents->path("report.ps~");
    QVERIFY(QFile::rename(ours, m_documents->path("kept by the user")));
    QVERIFY(QFile::link(m_documents->path("kept by the user"), ours));
    QCOMPARE(recover(), QStringList());
    QVERIFY(QFileInfo(ours).isSymLink());
    QCOMPARE(contentOf(ours), QByteArray("printed"));
}

void TestJournal::leavesTheJournalOfALivingProcessAlone()
{
    startKeeper({QStringLiteral("placed"), QStringLiteral("folder")});
    QCOMPARE(recover(), QStringList());
    QVERIFY(QFileInfo::exists(m_documents->path("report.ps~")));
    QVERIFY(QFileInfo::exists(m_workFolder));
    kill();
    QCOMPARE(recover().size(), 2);
}

void TestJournal::leavesItsOwnJournalAlone()
{
    Journal journal(m_journals->path());
    QVERIFY(journal.open());
    const auto file = m_documents->write("a.ps~", "ours");
    journal.planFile(file, file);
    journal.madeFile(file);
    QCOMPARE(journal.recover(), QStringList());
    QCOMPARE(contentOf(file), QByteArray("ours"));
}

void TestJournal::severalKilledProcessesAreRecovered()
{
    startKeeper({QStringLiteral("placed")});
    kill();
    startKeeper({QStringLiteral("placed"), QStringLiteral("begun")});
    kill();
    QCOMPARE(recover(),
             QStringList({m_documents->path("begun.ps~"), m_documents->path("report.ps2~"),
                          m_documents->path("report.ps~")}));
    QCOMPARE(m_documents->names(), QStringList());
    QCOMPARE(m_journals->names(), QStringList());
}

void TestJournal::nothingIsLeftToRecoverTheSecondTime()
{
    startKeeper({QStringLiteral("placed")});
    kill();
    QCOMPARE(recover().size(), 1);
    m_documents->write("report.ps~", "the user's");
    QCOMPARE(recover(), QStringList());
    QCOMPARE(m_documents->names(), QStringList{QStringLiteral("report.ps~")});
}

void TestJournal::damagedLinesAreSkipped()
{
    const auto ours = m_documents->write("ours.ps~", "ours");
    const auto made = note("made", ours, ExclusiveFile::identityOf(ours));
    leaveJournal("garbage\n\n[1]\n{\"file\":7}\n{\"folder\":null}\n{}\n" + QByteArray(9, '\0') +
                 "\n\xff\xfe\n" + made + "{\"file\":\"/cut");
    QCOMPARE(recover(), QStringList{ours});
    QCOMPARE(m_journals->names(), QStringList());
}

void TestJournal::whatCannotBeRemovedNowIsRemovedLater()
{
    const QFile::Permissions Read(0x5555);
    const QFile::Permissions Write(0x2222);
    const auto ours = m_documents->write("a.ps~", "ours");
    leaveJournal(note("made", ours, ExclusiveFile::identityOf(ours)));
    QVERIFY(QFile::setPermissions(m_journals->path(), Read | Write));
    QVERIFY(QFile::setPermissions(m_documents->path(), Read));
    {
        const OrdinaryUser user;
        QCOMPARE(recover(), QStringList());
    }
    QCOMPARE(contentOf(ours), QByteArray("ours"));
    QVERIFY(QFile::setPermissions(m_documents->path(), Read | Write));
    QCOMPARE(recover(), QStringList{ours});
    QCOMPARE(m_journals->names(), QStringList());
}

void TestJournal::whatCouldNotBeRemovedAtTheEndIsRemovedByTheNextStart()
{
    const auto ours = m_documents->write("a.ps~", "ours");
    {
        Journal journal(m_journals->path());
        QVERIFY(journal.open());
        journal.planFile(ours, ours);
        journal.madeFile(ours);
        journal.close();
    }
    QCOMPARE(recover(), QStringList{ours});
    QCOMPARE(m_journals->names(), QStringList());
}

void TestJournal::aJournalNeverLeadsToAFolderOfTheUsers_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("any folder") << QStringLiteral("documents");
    QTest::newRow("a link with such a name") << QStringLiteral("quorlin-work-link");
    QTest::newRow("nothing") << QString();
    QTest::newRow("the folder above") << QStringLiteral("documents/..");
    QTest::newRow("through a folder with such a name")
        << QStringLiteral("quorlin-work-link/../documents");
}

void TestJournal::aJournalNeverLeadsToAFolderOfTheUsers()
{
    QFETCH(const QString, name);
    const auto users = m_documents->write("documents/report.docx", "the user's");
    QVERIFY(QFile::link(m_documents->path("documents"), m_documents->path("quorlin-work-link")));
    leaveJournal(
        note("folder", name.isEmpty() ? name : m_documents->path() + QLatin1Char('/') + name));
    QCOMPARE(recover(), QStringList());
    QCOMPARE(contentOf(users), QByteArray("the user's"));
}

void TestJournal::aJournalNeverLeadsToAFileOfTheUsers()
{
    const auto report = m_documents->write("report.docx", "the user's");
    const auto other = m_documents->write("other.docx", "another one");
    leaveJournal(note("file", report) + note("made", other, QStringLiteral("1.2:3:4.5")) +
                 note("file", m_documents->path()));
    QCOMPARE(recover(), QStringList());
    QCOMPARE(contentOf(report), QByteArray("the user's"));
    QCOMPARE(contentOf(other), QByteArray("another one"));
}

QTEST_GUILESS_MAIN(TestJournal)
#include "tst_journal.moc"
