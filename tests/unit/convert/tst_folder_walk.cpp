#include "convert/FolderWalk.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Quorlin;

class TestFolderWalk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filesComeBeforeThoseOfSubFolders();
    void theWalkGoesDepthFirst();
    void namesAreInNaturalOrder();
    void aPathWithSpacesIsWalked();
    void aSlashAtTheEndChangesNothing();
    void aRelativeFolderGivesFullPaths();
    void aLoopOfLinksEnds();
    void theNamedFolderMayBeALink();
    void aLinkToAFileIsAFile();
    void hiddenEntriesArePassedOver();
    void pipesAndDeadLinksArePassedOver();
    void aFolderThatMayNotBeReadIsPassedOver();
    void aFolderThatIsNotThereIsEmpty();
    void aFolderThatVanishesOnTheWayIsEmpty();
    void aFileIsNoFolder();
    void aNameThatIsNotUtf8HidesNoOther();
    void longNamesAndDeepFoldersAreWalked();
    void tenThousandFilesComeInOrder();
    void aStopEndsTheWalkAtOnce();

private:
    [[nodiscard]] static QStringList walked(const QString &folder);
};

/// Relative to the folder.
QStringList TestFolderWalk::walked(const QString &folder)
{
    QStringList names;
    FolderWalk::walk(folder, [&](const QString &file) {
        QVERIFY(QDir::isAbsolutePath(file));
        names.append(QDir(folder).relativeFilePath(file));
    });
    return names;
}

void TestFolderWalk::filesComeBeforeThoseOfSubFolders()
{
    const TestFolder folder;
    for (const auto *name : {"a/inner.txt", "b.txt", "z/inner.txt"})
        folder.write(name, "text");
    QCOMPARE(walked(folder.path()),
             QStringList({QStringLiteral("b.txt"), QStringLiteral("a/inner.txt"),
                          QStringLiteral("z/inner.txt")}));
}

void TestFolderWalk::theWalkGoesDepthFirst()
{
    const TestFolder folder;
    for (const auto *name : {"1/1/x", "1/2/x", "1/x", "2/x", "x"})
        folder.write(name, "text");
    QCOMPARE(walked(folder.path()),
             QStringList({QStringLiteral("x"), QStringLiteral("1/x"), QStringLiteral("1/1/x"),
                          QStringLiteral("1/2/x"), QStringLiteral("2/x")}));
}

void TestFolderWalk::namesAreInNaturalOrder()
{
    const TestFolder folder;
    for (const auto *name : {"Chapter 10.txt", "chapter 2.txt", "10/x", "9/x"})
        folder.write(name, "text");
    QCOMPARE(walked(folder.path()),
             QStringList({QStringLiteral("chapter 2.txt"), QStringLiteral("Chapter 10.txt"),
                          QStringLiteral("9/x"), QStringLiteral("10/x")}));
}

void TestFolderWalk::aPathWithSpacesIsWalked()
{
    const TestFolder folder;
    folder.write(" my folder /sub folder/the report.txt", "text");
    QCOMPARE(walked(folder.path(" my folder ")),
             QStringList(QStringLiteral("sub folder/the report.txt")));
}

void TestFolderWalk::aSlashAtTheEndChangesNothing()
{
    const TestFolder folder;
    const auto file = folder.write("sub/a.txt", "text");
    QStringList files;
    FolderWalk::walk(folder.path("sub//"), [&](const QString &path) { files.append(path); });
    QCOMPARE(files, QStringList(file));
}

void TestFolderWalk::aRelativeFolderGivesFullPaths()
{
    const TestFolder folder;
    folder.write("sub/a.txt", "text");
    const auto relative = QDir::current().relativeFilePath(folder.path("sub"));
    QVERIFY(QDir::isRelativePath(relative));
    QCOMPARE(walked(relative), QStringList(QStringLiteral("a.txt")));
}

void TestFolderWalk::aLoopOfLinksEnds()
{
    const TestFolder folder;
    folder.write("sub/a.txt", "text");
    QVERIFY(QFile::link(folder.path(), folder.path("sub/up")));
    QVERIFY(QFile::link(folder.path("sub"), folder.path("sub/self")));
    QVERIFY(QFile::link(folder.path("loop"), folder.path("loop")));
    QCOMPARE(walked(folder.path()), QStringList(QStringLiteral("sub/a.txt")));
}

void TestFolderWalk::theNamedFolderMayBeALink()
{
    const TestFolder folder;
    folder.write("sub/a.txt", "text");
    QVERIFY(QFile::link(folder.path("sub"), folder.path("link")));
    QStringList files;
    FolderWalk::walk(folder.path("link"), [&](const QString &path) { files.append(path); });
    QCOMPARE(files, QStringList(folder.path("link/a.txt")));
}

void TestFolderWalk::aLinkToAFileIsAFile()
{
    const TestFolder folder;
    const auto file = folder.write("elsewhere/a.txt", "text");
    QVERIFY(QFile::link(file, folder.makeFolder("sub") + QStringLiteral("/link.txt")));
    QCOMPARE(walked(folder.path("sub")), QStringList(QStringLiteral("link.txt")));
}

void TestFolderWalk::hiddenEntriesArePassedOver()
{
    const TestFolder folder;
    for (const auto *name : {".hidden.txt", ".folder/a.txt", "seen.txt"})
        folder.write(name, "text");
    QCOMPARE(walked(folder.path()), QStringList(QStringLiteral("seen.txt")));
    QCOMPARE(walked(folder.path(".folder")), QStringList(QStringLiteral("a.txt")));
}

void TestFolderWalk::pipesAndDeadLinksArePassedOver()
{
    const TestFolder folder;
    QVERIFY(SystemActions::makeFifo(folder.path("pipe.txt")));
    QVERIFY(QFile::link(folder.path("nowhere"), folder.path("dead.txt")));
    QVERIFY(QFile::link(SystemActions::nullDevice(), folder.path("device.txt")));
    folder.write("a.txt", "text");
    QCOMPARE(walked(folder.path()), QStringList(QStringLiteral("a.txt")));
}

void TestFolderWalk::aFolderThatMayNotBeReadIsPassedOver()
{
    const OrdinaryUser user;
    const TestFolder folder;
    for (const auto *name : {"a/a.txt", "locked/b.txt", "z/c.txt"})
        folder.write(name, "text");
    QVERIFY(QFile::setPermissions(folder.path("locked"), QFile::WriteOwner));
    QCOMPARE(walked(folder.path()),
             QStringList({QStringLiteral("a/a.txt"), QStringLiteral("z/c.txt")}));
    QVERIFY(walked(folder.path("locked")).isEmpty());
}

void TestFolderWalk::aFolderThatIsNotThereIsEmpty()
{
    const TestFolder folder;
    QVERIFY(FolderWalk::entries(folder.path("none")).isEmpty());
    QVERIFY(walked(folder.path("none")).isEmpty());
}

void TestFolderWalk::aFolderThatVanishesOnTheWayIsEmpty()
{
    const TestFolder folder;
    for (const auto *name : {"a.txt", "gone/b.txt", "stays/c.txt"})
        folder.write(name, "text");
    QStringList files;
    FolderWalk::walk(folder.path(), [&](const QString &path) {
        files.append(path);
        QDir(folder.path("gone")).removeRecursively();
    });
    QCOMPARE(files, QStringList({folder.path("a.txt"), folder.path("stays/c.txt")}));
}

void TestFolderWalk::aFileIsNoFolder()
{
    const TestFolder folder;
    QVERIFY(walked(folder.write("a.txt", "text")).isEmpty());
}

void TestFolderWalk::aNameThatIsNotUtf8HidesNoOther()
{
    const TestFolder folder;
    folder.write("a.txt", "text");
    folder.write("z.txt", "text");
    const auto strange = QFile::encodeName(folder.path()) + "/b\xff\xfe.txt";
    QVERIFY(SystemActions::makeFile(strange));
    const auto found = walked(folder.path());
    QVERIFY(SystemActions::removeFile(strange));
    QCOMPARE(found, QStringList({QStringLiteral("a.txt"), QStringLiteral("z.txt")}));
}

void TestFolderWalk::longNamesAndDeepFoldersAreWalked()
{
    const TestFolder folder;
    QByteArray path;
    for (int level = 0; level < 12; ++level)
        path += QByteArray(250, char('a' + level)) + '/';
    folder.write((path + "report.txt").constData(), "text");
    QCOMPARE(walked(folder.path()), QStringList(QString::fromLatin1(path + "report.txt")));
}

void TestFolderWalk::tenThousandFilesComeInOrder()
{
    const TestFolder folder;
    QStringList expected;
    for (int number = 1; number <= 10'000; ++number) {
        expected.append(QStringLiteral("report %1.txt").arg(number));
        folder.write(qUtf8Printable(expected.last()), "x");
    }
    QCOMPARE(walked(folder.path()), expected);
}

void TestFolderWalk::aStopEndsTheWalkAtOnce()
{
    const TestFolder folder;
    for (const auto *name : {"a.txt", "b.txt", "c.txt", "sub/d.txt"})
        folder.write(name, "text");
    std::stop_source source;
    QStringList files;
    FolderWalk::walk(
        folder.path(),
        [&](const QString &path) {
            files.append(path);
            if (path.endsWith(QLatin1String("b.txt")))
                source.request_stop();
        },
        source.get_token());
    QCOMPARE(files, QStringList({folder.path("a.txt"), folder.path("b.txt")}));
    QVERIFY(FolderWalk::entries(folder.path(), source.get_token()).isEmpty());
}

QTEST_GUILESS_MAIN(TestFolderWalk)
#include "tst_folder_walk.moc"
