#include "component/supervisor/ExclusiveFile.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

#include <memory>

using namespace Quorlin;
using Result = ExclusiveFile::Result;

class TestExclusiveFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void publishesByASecondName();
    void publishesAcrossFileSystemsByACopy();
    void tellsThatTheCopyIsThereBeforeItsFirstByte();
    void publishKeepsWhatIsThere_data();
    void publishKeepsWhatIsThere();
    void publishAcrossFileSystemsKeepsWhatIsThere_data();
    void publishAcrossFileSystemsKeepsWhatIsThere();
    void publishFailsWithoutASource();
    void publishTellsThatTheFolderMayNotBeWritten();
    void aFullDiskLeavesNoHalfFile();
    void copiesTheBytes_data();
    void copiesTheBytes();
    void copiesWhatALinkLeadsTo();
    void copyKeepsWhatIsThere_data();
    void copyKeepsWhatIsThere();
    void copyRefusesAPipeWithoutWaiting();
    void copyRefusesADevice();
    void copyRefusesAFolder();
    void copyTellsThatTheSourceMayNotBeRead();
    void identityOutlivesRenamingAndEditing();
    void identityDiffersForAFileInAnOthersPlace();
    void identityIsThatOfALinkItself();
    void versionChangesWithTheContent();
    void versionChangesWithTheTimeOfChange();
    void nothingHasNoIdentityAndNoVersion();

private:
    void fillPlace(const QString &path) const;
    void makePlaces() const;

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<TestFolder> m_elsewhere; ///< on another file system, if there is one
};

void TestExclusiveFile::init()
{
    m_folder = std::make_unique<TestFolder>();
    const auto other = SystemActions::folderOnOtherFileSystem(m_folder->path());
    m_elsewhere = other.isEmpty() ? nullptr : std::make_unique<TestFolder>(other);
}

void TestExclusiveFile::cleanup()
{
    m_folder.reset();
    m_elsewhere.reset();
}

void TestExclusiveFile::publishesByASecondName()
{
    const auto from = m_folder->write("from", "content");
    const auto to = m_folder->path("to");
    int created = 0;
    QCOMPARE(ExclusiveFile::publish(from, to, [&] { ++created; }), Result::Done);
    QCOMPARE(created, 1);
    QCOMPARE(contentOf(to), QByteArray("content"));
    QCOMPARE(contentOf(from), QByteArray("content"));
    QCOMPARE(ExclusiveFile::identityOf(to), ExclusiveFile::identityOf(from));
}

void TestExclusiveFile::publishesAcrossFileSystemsByACopy()
{
    if (!m_elsewhere)
        QSKIP("there is no second file system to write to");
    const QByteArray content(3'000'000, 'x');
    const auto from = m_folder->write("from", content);
    const auto to = m_elsewhere->path("to");
    QCOMPARE(ExclusiveFile::publish(from, to, [] {}), Result::Done);
    QCOMPARE(contentOf(to), content);
    QVERIFY(ExclusiveFile::identityOf(to) != ExclusiveFile::identityOf(from));
}

void TestExclusiveFile::tellsThatTheCopyIsThereBeforeItsFirstByte()
{
    if (!m_elsewhere)
        QSKIP("there is no second file system to write to");
    const auto to = m_elsewhere->path("to");
    qint64 size = -1;
    QCOMPARE(ExclusiveFile::publish(m_folder->write("from", "content"), to,
                                    [&] { size = QFileInfo(to).size(); }),
             Result::Done);
    QCOMPARE(size, 0);
}

void TestExclusiveFile::makePlaces() const
{
    QTest::addColumn<QString>("what");
    for (const char *what : {"file", "empty", "folder", "link", "dangling link", "pipe"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

/// Puts something of the user's where the new file should go.
void TestExclusiveFile::fillPlace(const QString &path) const
{
    QFETCH(const QString, what);
    const auto users = m_folder->write("users", "the user's");
    if (what == QLatin1String("file"))
        QVERIFY(QFile::copy(users, path));
    if (what == QLatin1String("empty"))
        QVERIFY(QFile::copy(m_folder->write("nothing", ""), path));
    if (what == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(path));
    if (what == QLatin1String("link"))
        QVERIFY(QFile::link(users, path));
    if (what == QLatin1String("dangling link"))
        QVERIFY(QFile::link(m_folder->path("nowhere"), path));
    if (what == QLatin1String("pipe"))
        QVERIFY(SystemActions::makeFifo(path));
}

void TestExclusiveFile::publishKeepsWhatIsThere_data()
{
    makePlaces();
}

void TestExclusiveFile::publishKeepsWhatIsThere()
{
    const auto to = m_folder->path("to");
    fillPlace(to);
    const auto before = ExclusiveFile::versionOf(to);
    QVERIFY(!before.isEmpty());
    bool created = false;
    QCOMPARE(ExclusiveFile::publish(m_folder->write("from", "ours"), to, [&] { created = true; }),
             Result::Exists);
    QVERIFY(!created);
    QCOMPARE(ExclusiveFile::versionOf(to), before);
    QCOMPARE(contentOf(m_folder->path("users")), QByteArray("the user's"));
    QVERIFY(!QFileInfo::exists(m_folder->path("nowhere")));
}

void TestExclusiveFile::publishAcrossFileSystemsKeepsWhatIsThere_data()
{
    makePlaces();
}

void TestExclusiveFile::publishAcrossFileSystemsKeepsWhatIsThere()
{
    if (!m_elsewhere)
        QSKIP("there is no second file system to write to");
    const auto to = m_elsewhere->path("to");
    fillPlace(to);
    const auto before = ExclusiveFile::versionOf(to);
    QCOMPARE(ExclusiveFile::publish(m_folder->write("from", "ours"), to, [] {}), Result::Exists);
    QCOMPARE(ExclusiveFile::versionOf(to), before);
    QCOMPARE(contentOf(m_folder->path("users")), QByteArray("the user's"));
    QVERIFY(!QFileInfo::exists(m_folder->path("nowhere")));
}

void TestExclusiveFile::publishFailsWithoutASource()
{
    const auto to = m_folder->path("to");
    bool created = false;
    QCOMPARE(ExclusiveFile::publish(m_folder->path("gone"), to, [&] { created = true; }),
             Result::Failed);
    QVERIFY(!created);
    QVERIFY(ExclusiveFile::identityOf(to).isEmpty());
}

void TestExclusiveFile::publishTellsThatTheFolderMayNotBeWritten()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto locked = folder.makeFolder("locked");
    const auto from = folder.write("from", "content");
    QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(ExclusiveFile::publish(from, locked + QStringLiteral("/to"), [] {}),
             Result::NotAllowed);
    QCOMPARE(namesIn(locked), QStringList());
}

void TestExclusiveFile::aFullDiskLeavesNoHalfFile()
{
    const auto folder = m_folder->makeFolder("disk");
    const SmallDisk disk(folder, 64);
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk to fill");
    const auto from = m_folder->write("from", QByteArray(1'000'000, 'x'));
    const auto to = folder + QStringLiteral("/to");
    QCOMPARE(ExclusiveFile::publish(from, to, [] {}), Result::NoRoom);
    QCOMPARE(ExclusiveFile::copy(from, to), Result::NoRoom);
    QCOMPARE(namesIn(folder), QStringList());
    QCOMPARE(QFileInfo(from).size(), 1'000'000);
}

void TestExclusiveFile::copiesTheBytes_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("text") << QByteArray("content\n");
    QTest::newRow("bytes") << QByteArray("\0\xff\n\r\0", 5);
    QTest::newRow("many") << QByteArray("0123456789abcdef").repeated(500'000);
}

void TestExclusiveFile::copiesTheBytes()
{
    QFETCH(const QByteArray, content);
    const auto from = m_folder->write("from", content);
    const auto to = m_folder->path("übung \"1\",\n文.docx");
    QCOMPARE(ExclusiveFile::copy(from, to), Result::Done);
    QCOMPARE(contentOf(to), content);
    QVERIFY(ExclusiveFile::identityOf(to) != ExclusiveFile::identityOf(from));
}

void TestExclusiveFile::copiesWhatALinkLeadsTo()
{
    QVERIFY(QFile::link(m_folder->write("from", "content"), m_folder->path("link")));
    QCOMPARE(ExclusiveFile::copy(m_folder->path("link"), m_folder->path("to")), Result::Done);
    QVERIFY(!QFileInfo(m_folder->path("to")).isSymLink());
    QCOMPARE(contentOf(m_folder->path("to")), QByteArray("content"));
}

void TestExclusiveFile::copyKeepsWhatIsThere_data()
{
    makePlaces();
}

void TestExclusiveFile::copyKeepsWhatIsThere()
{
    const auto to = m_folder->path("to");
    fillPlace(to);
    const auto before = ExclusiveFile::versionOf(to);
    QCOMPARE(ExclusiveFile::copy(m_folder->write("from", "ours"), to), Result::Exists);
    QCOMPARE(ExclusiveFile::versionOf(to), before);
}

void TestExclusiveFile::copyRefusesAPipeWithoutWaiting()
{
    const auto pipe = m_folder->path("pipe");
    QVERIFY(SystemActions::makeFifo(pipe));
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(ExclusiveFile::copy(pipe, m_folder->path("to")), Result::Failed);
    QVERIFY(clock.elapsed() < 5000);
    QCOMPARE(m_folder->names(), QStringList{QStringLiteral("pipe")});
}

void TestExclusiveFile::copyRefusesADevice()
{
    QCOMPARE(ExclusiveFile::copy(SystemActions::nullDevice(), m_folder->path("to")),
             Result::Failed);
    QCOMPARE(m_folder->names(), QStringList());
}

void TestExclusiveFile::copyRefusesAFolder()
{
    QCOMPARE(ExclusiveFile::copy(m_folder->makeFolder("folder"), m_folder->path("to")),
             Result::Failed);
    QCOMPARE(m_folder->names(), QStringList{QStringLiteral("folder")});
}

void TestExclusiveFile::copyTellsThatTheSourceMayNotBeRead()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto from = folder.write("from", "content");
    QVERIFY(QFile::setPermissions(from, QFile::WriteOwner));
    QCOMPARE(ExclusiveFile::copy(from, folder.path("to")), Result::NotAllowed);
    QCOMPARE(folder.names(), QStringList{QStringLiteral("from")});
}

void TestExclusiveFile::identityOutlivesRenamingAndEditing()
{
    const auto path = m_folder->write("a", "content");
    const auto before = ExclusiveFile::identityOf(path);
    QVERIFY(QFile::rename(path, m_folder->path("b")));
    m_folder->write("b", "another content");
    QCOMPARE(ExclusiveFile::identityOf(m_folder->path("b")), before);
}

void TestExclusiveFile::identityDiffersForAFileInAnOthersPlace()
{
    const auto path = m_folder->write("a", "content");
    for (int i = 0; i < 20; ++i) { // the file system may give the number of the old file again
        const auto before = ExclusiveFile::identityOf(path);
        QVERIFY(QFile::remove(path));
        m_folder->write("a", "content");
        QVERIFY(ExclusiveFile::identityOf(path) != before);
        QTest::qWait(5); // births are told apart from one tick of the clock to the next
    }
}

void TestExclusiveFile::identityIsThatOfALinkItself()
{
    const auto path = m_folder->write("a", "content");
    QVERIFY(QFile::link(path, m_folder->path("link")));
    QVERIFY(QFile::link(m_folder->path("nowhere"), m_folder->path("dangling")));
    QVERIFY(ExclusiveFile::identityOf(m_folder->path("link")) != ExclusiveFile::identityOf(path));
    QVERIFY(!ExclusiveFile::identityOf(m_folder->path("dangling")).isEmpty());
}

void TestExclusiveFile::versionChangesWithTheContent()
{
    const auto path = m_folder->write("a", "content");
    const auto before = ExclusiveFile::versionOf(path);
    QCOMPARE(ExclusiveFile::versionOf(path), before);
    m_folder->write("a", "content and more");
    QVERIFY(ExclusiveFile::versionOf(path) != before);
    QVERIFY(before.startsWith(ExclusiveFile::identityOf(path)));
}

void TestExclusiveFile::versionChangesWithTheTimeOfChange()
{
    const auto path = m_folder->write("a", "content");
    const auto before = ExclusiveFile::versionOf(path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTimeUtc().addSecs(-60),
                             QFileDevice::FileModificationTime));
    QVERIFY(ExclusiveFile::versionOf(path) != before);
}

void TestExclusiveFile::nothingHasNoIdentityAndNoVersion()
{
    QCOMPARE(ExclusiveFile::identityOf(m_folder->path("gone")), QString());
    QCOMPARE(ExclusiveFile::versionOf(m_folder->path("gone")), QString());
}

QTEST_GUILESS_MAIN(TestExclusiveFile)
#include "tst_exclusivefile.moc"
