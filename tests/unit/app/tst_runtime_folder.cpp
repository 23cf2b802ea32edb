#include "app/RuntimeFolder.h"

#include "app/InstanceChannel.h"
#include "app/InstanceLock.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QTest>

using namespace Quorlin;
using Mark = InstanceChannel::Mark;

class RuntimeFolderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void makesItsFolderForItsUserAlone();
    void makesItAlsoWithAnOddFileMask();
    void prefersTheFolderOfTheSession();
    void fallsBackWithoutAFolderOfTheSession_data();
    void fallsBackWithoutAFolderOfTheSession();
    void doesNotTrustASessionThatOthersWrite();
    void fallsBackWhenTheFolderInTheSessionIsNotSafe();
    void refusesALink();
    void refusesAFolderOpenToOthers_data();
    void refusesAFolderOpenToOthers();
    void refusesAFolderOfSomebodyElse();
    void refusesAFile();
    void staysWithTheFolderThatItChecked();
    void tellsScreensApart();
    void worksOnItsOwnWithoutASafeFolder();
    void worksOnItsOwnWhenTheLockCannotBeMade();

    void givesTheLockToOneOnly();
    void locksAnewWhenTheFileWasRemoved();
    void leavesTheFileOfTheLock();
    void doesNotFollowALinkToAnotherFile();

private:
    std::unique_ptr<TestFolder> m_folder;

    [[nodiscard]] QString path(const char *name) const { return m_folder->path(name); }
};

void RuntimeFolderTest::init()
{
    m_folder = std::make_unique<TestFolder>();
}

void RuntimeFolderTest::makesItsFolderForItsUserAlone()
{
    QVERIFY(RuntimeFolder::at(path("own")).isOpen());
    QCOMPARE(SystemActions::modeOf(path("own")), 0700);
    QVERIFY(RuntimeFolder::at(path("own")).isOpen());
}

void RuntimeFolderTest::makesItAlsoWithAnOddFileMask()
{
    const auto before = SystemActions::setFileMask(0);
    const bool isOpen = RuntimeFolder::at(path("own")).isOpen();
    SystemActions::setFileMask(before);
    QVERIFY(isOpen);
    QCOMPARE(SystemActions::modeOf(path("own")), 0700);
}

void RuntimeFolderTest::prefersTheFolderOfTheSession()
{
    QVERIFY(RuntimeFolder::firstSafe(m_folder->makeFolder("run"), path("other")).isOpen());
    QCOMPARE(m_folder->names(), QStringList{QStringLiteral("run")});
    QCOMPARE(namesIn(path("run")), QStringList{QStringLiteral("quorlin")});
}

void RuntimeFolderTest::fallsBackWithoutAFolderOfTheSession_data()
{
    QTest::addColumn<QString>("runtime");
    QTest::newRow("unset") << QString();
    QTest::newRow("missing") << "/nowhere/at/all";
    QTest::newRow("relative") << ".";
    QTest::newRow("a file") << "/etc/passwd";
}

void RuntimeFolderTest::fallsBackWithoutAFolderOfTheSession()
{
    QFETCH(const QString, runtime);
    QVERIFY(RuntimeFolder::firstSafe(runtime, path("fallback")).isOpen());
    QCOMPARE(m_folder->names(), QStringList{QStringLiteral("fallback")});
}

void RuntimeFolderTest::doesNotTrustASessionThatOthersWrite()
{
    const auto runtime = m_folder->makeFolder("run");
    QVERIFY(QFile::setPermissions(runtime, QFile::Permissions(0x7777)));
    QVERIFY(RuntimeFolder::firstSafe(runtime, path("fallback")).isOpen());
    QVERIFY(namesIn(runtime).isEmpty());
}

void RuntimeFolderTest::fallsBackWhenTheFolderInTheSessionIsNotSafe()
{
    m_folder->write("run/quorlin", "a file");
    QVERIFY(RuntimeFolder::firstSafe(path("run"), path("fallback")).isOpen());
    QCOMPARE(SystemActions::modeOf(path("fallback")), 0700);
}

void RuntimeFolderTest::refusesALink()
{
    QVERIFY(RuntimeFolder::at(path("own")).isOpen());
    QVERIFY(QFile::link(path("own"), path("link")));
    QVERIFY(!RuntimeFolder::at(path("link")).isOpen());
}

void RuntimeFolderTest::refusesAFolderOpenToOthers_data()
{
    QTest::addColumn<int>("permissions");
    QTest::newRow("read by the group") << 0x7740;
    QTest::newRow("entered by the group") << 0x7710;
    QTest::newRow("written by all") << 0x7702;
    QTest::newRow("read by all") << 0x7704;
}

void RuntimeFolderTest::refusesAFolderOpenToOthers()
{
    QFETCH(const int, permissions);
    const auto folder = m_folder->makeFolder("open");
    QVERIFY(QFile::setPermissions(folder, QFile::Permissions(permissions)));
    QVERIFY(!RuntimeFolder::at(folder).isOpen());
}

void RuntimeFolderTest::refusesAFolderOfSomebodyElse()
{
    QVERIFY(RuntimeFolder::at(path("own")).isOpen());
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
    const OrdinaryUser user;
    // Only the administrator can become somebody else for this.
    const bool isSomebodyElse = QFileInfo(path("own")).ownerId() == 0;
    QCOMPARE(RuntimeFolder::at(path("own")).isOpen(), !isSomebodyElse);
}

void RuntimeFolderTest::refusesAFile()
{
    QVERIFY(!RuntimeFolder::at(m_folder->write("file", "x")).isOpen());
}

void RuntimeFolderTest::staysWithTheFolderThatItChecked()
{
    const auto folder = RuntimeFolder::at(path("own"));
    QVERIFY(QFile::rename(path("own"), path("moved")));
    m_folder->makeFolder("own");
    QFile file(QFile::decodeName(folder.pathOf("x")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(namesIn(path("moved")), QStringList{QStringLiteral("x")});
}

void RuntimeFolderTest::tellsScreensApart()
{
    const auto wayland = qgetenv("WAYLAND_DISPLAY");
    const auto x11 = qgetenv("DISPLAY");
    QByteArrayList names;
    qunsetenv("WAYLAND_DISPLAY");
    for (const auto *const display : {":0", ":1", "localhost:10.0", "../:0"}) {
        qputenv("DISPLAY", display);
        names.append(RuntimeFolder::screenName());
    }
    for (const auto *const display : {"wayland-0", "wayland-1", "/tmp/wayland-0"}) {
        qputenv("WAYLAND_DISPLAY", display);
        names.append(RuntimeFolder::screenName());
    }
    qputenv("DISPLAY", x11);
    qputenv("WAYLAND_DISPLAY", wayland);
    QCOMPARE(QSet<QByteArray>(names.begin(), names.end()).size(), names.size());
    for (const auto &name : names)
        QVERIFY2(!name.isEmpty() && !name.contains('/'), name.constData());
}

void RuntimeFolderTest::worksOnItsOwnWithoutASafeFolder()
{
    InstanceChannel channel(m_folder->write("file", "x"));
    QCOMPARE(channel.claim(), Mark::None);
    QVERIFY(!channel.isServerThere());
    QVERIFY(!channel.listen([](const HandoffFrame &) {}));
    QVERIFY(!channel.post(HandoffFrame::ofActivation({})));
}

void RuntimeFolderTest::worksOnItsOwnWhenTheLockCannotBeMade()
{
    const auto folder = path("own");
    QVERIFY(RuntimeFolder::at(folder).isOpen());
    const auto name =
        QStringLiteral("/instance-%1.lock").arg(QString::fromLatin1(RuntimeFolder::screenName()));
    QVERIFY(QDir(folder).mkdir(name.mid(1)));
    QCOMPARE(InstanceChannel(folder).claim(), Mark::None);
}

void RuntimeFolderTest::givesTheLockToOneOnly()
{
    const auto name = QFile::encodeName(path("lock"));
    InstanceLock one(name);
    InstanceLock other(name);
    QCOMPARE(one.take(), InstanceLock::Holder::Us);
    QCOMPARE(one.take(), InstanceLock::Holder::Us);
    QCOMPARE(other.take(), InstanceLock::Holder::Others);
    QVERIFY(!other.isHeld());
    one.release();
    QCOMPARE(other.take(), InstanceLock::Holder::Us);
    QCOMPARE(one.take(), InstanceLock::Holder::Others);
}

/// A lock on a file that nobody finds any more would be no lock.
void RuntimeFolderTest::locksAnewWhenTheFileWasRemoved()
{
    const auto name = QFile::encodeName(path("lock"));
    InstanceLock one(name);
    QCOMPARE(one.take(), InstanceLock::Holder::Us);
    one.release();
    QVERIFY(QFile::remove(path("lock")));
    QCOMPARE(one.take(), InstanceLock::Holder::Us);
    QCOMPARE(InstanceLock(name).take(), InstanceLock::Holder::Others);
}

void RuntimeFolderTest::leavesTheFileOfTheLock()
{
    InstanceLock lock(QFile::encodeName(path("lock")));
    QCOMPARE(lock.take(), InstanceLock::Holder::Us);
    QCOMPARE(SystemActions::modeOf(path("lock")), 01600);
    lock.release();
    QVERIFY(QFile::exists(path("lock")));
}

void RuntimeFolderTest::doesNotFollowALinkToAnotherFile()
{
    const auto file = m_folder->write("file", "x");
    QVERIFY(QFile::link(file, path("lock")));
    QCOMPARE(InstanceLock(QFile::encodeName(path("lock"))).take(), InstanceLock::Holder::Unknown);
}

QTEST_GUILESS_MAIN(RuntimeFolderTest)
#include "tst_runtime_folder.moc"
