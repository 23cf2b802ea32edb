#include "component/supervisor/FolderRemoval.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <filesystem>

using namespace Quorlin;

class TestFolderRemoval : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void removesAFolderWithAllInIt();
    void removesWhatIsDeeperThanAPathIsLong();
    void removesFoldersThatMayNotBeEntered();
    void doesNotFollowLinks();
    void aFolderThatIsGoneIsRemoved();

private:
    TestFolder m_folder;
};

void TestFolderRemoval::removesAFolderWithAllInIt()
{
    m_folder.write("a/b/c", "c");
    m_folder.write("a/d", "d");
    QVERIFY(FolderRemoval::remove(m_folder.path("a")));
    QCOMPARE(m_folder.names(), QStringList());
}

void TestFolderRemoval::removesWhatIsDeeperThanAPathIsLong()
{
    const auto before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder.makeFolder("deep")));
    const std::string name(200, 'x');
    for (int depth = 0; depth < 60; ++depth) {
        std::filesystem::create_directory(name);
        std::filesystem::current_path(name);
        QFile file(QStringLiteral("file"));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QDir::setCurrent(before));
    QVERIFY2(!QDir(m_folder.path("deep")).removeRecursively(), "not deep enough to be a test");
    QVERIFY(FolderRemoval::remove(m_folder.path("deep")));
    QCOMPARE(m_folder.names(), QStringList());
}

void TestFolderRemoval::removesFoldersThatMayNotBeEntered()
{
    m_folder.write("a/locked/file", "x");
    QVERIFY(QFile::setPermissions(m_folder.path("a/locked"), {}));
    QVERIFY(FolderRemoval::remove(m_folder.path("a")));
    QCOMPARE(m_folder.names(), QStringList());
}

void TestFolderRemoval::doesNotFollowLinks()
{
    const TestFolder other;
    other.write("kept", "kept");
    m_folder.makeFolder("a");
    QVERIFY(QFile::link(other.path(), m_folder.path("a/link")));
    QVERIFY(FolderRemoval::remove(m_folder.path("a")));
    QCOMPARE(other.names(), QStringList(QStringLiteral("kept")));
}

void TestFolderRemoval::aFolderThatIsGoneIsRemoved()
{
    QVERIFY(FolderRemoval::remove(m_folder.path("gone")));
}

QTEST_GUILESS_MAIN(TestFolderRemoval)
#include "tst_folderremoval.moc"
