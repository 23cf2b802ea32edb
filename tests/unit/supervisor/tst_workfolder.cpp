#include "component/supervisor/WorkFolder.h"

#include "component/supervisor/Journal.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QTest>

#include <memory>

using namespace Quorlin;

class TestWorkFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void onlyItsOwnerMayLookInside();
    void noTwoAreTheSame();
    void liesInTheFolderForTemporaryFiles();
    void isWrittenIntoTheJournalBeforeItIsMade();
    void goesWithAllInIt();
    void goesWithItsObject();
    void removingFollowsNoLinks();
    void foldersInsideAreNewAndEmpty();
    void namesAreGivenOnce();
    void cannotBeMadeWithoutAFolderForTemporaryFiles();
    void givesNoFoldersBeforeItIsMade();
    void isKnownByItsNameAndOwner();

private:
    std::unique_ptr<TestFolder> m_temporary;
    std::unique_ptr<Journal> m_journal;
    QByteArray m_temporaryBefore;
};

void TestWorkFolder::init()
{
    m_temporaryBefore = qgetenv("TMPDIR");
    m_temporary = std::make_unique<TestFolder>();
    qputenv("TMPDIR", QFile::encodeName(m_temporary->makeFolder("tmp")));
    m_journal = std::make_unique<Journal>(m_temporary->path("journals"));
    QVERIFY(m_journal->open());
}

void TestWorkFolder::cleanup()
{
    if (m_temporaryBefore.isEmpty())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", m_temporaryBefore);
    m_journal.reset();
    m_temporary.reset();
}

void TestWorkFolder::onlyItsOwnerMayLookInside()
{
    WorkFolder folder(*m_journal);
    QVERIFY(folder.create());
    QCOMPARE(SystemActions::modeOf(folder.path()), 0700);
}

void TestWorkFolder::noTwoAreTheSame()
{
    WorkFolder one(*m_journal), two(*m_journal);
    QVERIFY(one.create());
    QVERIFY(two.create());
    QVERIFY(one.path() != two.path());
}

void TestWorkFolder::liesInTheFolderForTemporaryFiles()
{
    WorkFolder folder(*m_journal);
    QVERIFY(folder.create());
    QCOMPARE(QFileInfo(folder.path()).absolutePath(), m_temporary->path("tmp"));
}

void TestWorkFolder::isWrittenIntoTheJournalBeforeItIsMade()
{
    qputenv("TMPDIR", QFile::encodeName(m_temporary->write("file", "in the way")));
    WorkFolder folder(*m_journal);
    QVERIFY(!folder.create());
    const QDir journals(m_temporary->path("journals"));
    const auto names = journals.entryList({QStringLiteral("*.journal")});
    QCOMPARE(names.size(), 1);
    QVERIFY(contentOf(journals.filePath(names[0])).contains("quorlin-work-"));
}

void TestWorkFolder::goesWithAllInIt()
{
    WorkFolder folder(*m_journal);
    QVERIFY(folder.create());
    QVERIFY(QDir().mkpath(folder.path() + QStringLiteral("/a/b")));
    m_temporary->write("source", "content");
    QVERIFY(QFile::copy(m_temporary->path("source"), folder.path() + QStringLiteral("/a/.hidden")));
    folder.remove();
    QCOMPARE(namesIn(m_temporary->path("tmp")), QStringList());
    QCOMPARE(folder.path(), QString());
    folder.remove();
}

void TestWorkFolder::goesWithItsObject()
{
    {
        WorkFolder folder(*m_journal);
        QVERIFY(folder.create());
        QCOMPARE(namesIn(m_temporary->path("tmp")).size(), 1);
    }
    QCOMPARE(namesIn(m_temporary->path("tmp")), QStringList());
}

void TestWorkFolder::removingFollowsNoLinks()
{
    const auto users = m_temporary->write("documents/report.docx", "the user's");
    WorkFolder folder(*m_journal);
    QVERIFY(folder.create());
    QVERIFY(QFile::link(m_temporary->path("documents"), folder.path() + QStringLiteral("/link")));
    folder.remove();
    QCOMPARE(contentOf(users), QByteArray("the user's"));
}

void TestWorkFolder::foldersInsideAreNewAndEmpty()
{
    WorkFolder folder(*m_journal);
    QVERIFY(folder.create());
    QSet<QString> paths;
    for (int i = 0; i < 100; ++i) {
        const auto path = folder.newFolder(QStringLiteral("document"));
        QVERIFY(path);
        QVERIFY(path->startsWith(folder.path() + QLatin1Char('/')));
        QVERIFY(QFileInfo(*path).isDir());
        QCOMPARE(namesIn(*path), QStringList());
        paths.insert(*path);
    }
    QCOMPARE(paths.size(), 100);
}

void TestWorkFolder::namesAreGivenOnce()
{
    WorkFolder folder(*m_journal);
    QSet<QString> names;
    for (int i = 0; i < 100; ++i)
        names.insert(folder.uniqueName());
    QCOMPARE(names.size(), 100);
}

void TestWorkFolder::cannotBeMadeWithoutAFolderForTemporaryFiles()
{
    for (const auto &path : {m_temporary->write("file", "in the way"), m_temporary->path("gone")}) {
        qputenv("TMPDIR", QFile::encodeName(path));
        WorkFolder folder(*m_journal);
        QVERIFY(!folder.create());
        QCOMPARE(folder.path(), QString());
    }
}

void TestWorkFolder::givesNoFoldersBeforeItIsMade()
{
    WorkFolder folder(*m_journal);
    QVERIFY(!folder.newFolder(QStringLiteral("document")));
}

void TestWorkFolder::isKnownByItsNameAndOwner()
{
    WorkFolder folder(*m_journal);
    QVERIFY(folder.create());
    QVERIFY(WorkFolder::isWorkFolder(folder.path()));
    QVERIFY(!WorkFolder::isWorkFolder(m_temporary->path()));
    QVERIFY(!WorkFolder::isWorkFolder(m_temporary->path("quorlin-work-gone")));
    QVERIFY(!WorkFolder::isWorkFolder(m_temporary->write("quorlin-work-file", "content")));
    QVERIFY(QFile::link(folder.path(), m_temporary->path("quorlin-work-link")));
    QVERIFY(!WorkFolder::isWorkFolder(m_temporary->path("quorlin-work-link")));
}

QTEST_GUILESS_MAIN(TestWorkFolder)
#include "tst_workfolder.moc"
