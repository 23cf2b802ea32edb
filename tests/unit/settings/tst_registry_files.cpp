#include "settings/LayeredRegistry.h"

#include "RegistryScene.h"
#include "support/SystemActions.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace Quorlin;

namespace {

constexpr auto User = RegistryRoot::CurrentUser;
constexpr auto Machine = RegistryRoot::LocalMachine;

const auto Key = RegistryScene::key();
const auto Text = QStringLiteral("text");

/// The log must say where the user's file went, and why.
void expectSetAside(const RegistryScene &scene, int number = 1,
                    const QString &reason = QStringLiteral("database disk image is malformed"))
{
    const auto files = QStringLiteral("The settings in %1 were set aside as \"%2\": ")
                           .arg(scene.userFile(), scene.damaged(number));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QRegularExpression::escape(files) +
                                                          reason + QLatin1Char('$')));
}

const auto NoDatabase = QStringLiteral("file is not a database");
const auto Lost = QStringLiteral("the database itself is gone");

} // namespace

class tst_registry_files : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readingMakesNothing();
    void deletingMakesNothing();
    void theUsersFileIsTheUsersAlone();
    void theMachinesFileIsForAllToRead();
    void permissionsThatAreThereStay();
    void anEmptyFileIsBegun();
    void garbageReadsAsMissing_data();
    void garbageReadsAsMissing();
    void theNextWriteSetsADamagedFileAside_data();
    void theNextWriteSetsADamagedFileAside();
    void earlierDamagedFilesAreNeverOverwritten();
    void whatBelongsToADamagedFileGoesWithIt();
    void whatALostFileLeftIsSetAside();
    void deletingLeavesADamagedFile();
    void spoiltPagesCountAsDamage();
    void aCutFileCountsAsDamage();
    void missingTablesCountAsDamage();
    void aReadOnlyFileIsReadAndNotWritten();
    void aReadOnlyFolderIsReadAndNotWritten();
    void anUnreadableFileIsMissing();
    void whatIsNoFileIsLeftAlone_data();
    void whatIsNoFileIsLeftAlone();
    void aLinkLeadsToTheFile();
    void aDamagedLinkIsSetAsideAndItsTargetStays();
    void aNewerFileIsLeftAlone();
    void aForeignDatabaseIsLeftAlone();
    void aDatabaseWithItsOwnCodeRunsNone();
    void aDatabaseThatComputesForEverIsLeft();
    void hugeValuesAreRefused();
    void aFullDiskLosesNothing();
};

void tst_registry_files::readingMakesNothing()
{
    const RegistryScene scene;
    auto &store = *scene.store();
    for (const auto root : {RegistryRoot::ClassesRoot, User, Machine}) {
        const RegistryKey key{root, QStringLiteral("A")};
        QCOMPARE(store.openKey(key), RegistryStatus::Missing);
        QCOMPARE(store.queryValue(key, {}).status, RegistryStatus::Missing);
        QCOMPARE(store.enumerateKeys(key).status, RegistryStatus::Missing);
        QCOMPARE(store.enumerateValues(key).status, RegistryStatus::Missing);
    }
    QCOMPARE(scene.folder().names(), QStringList());
}

void tst_registry_files::deletingMakesNothing()
{
    const RegistryScene scene;
    QCOMPARE(scene.store()->deleteKey(Key), RegistryStatus::Missing);
    QCOMPARE(scene.store()->deleteValue(Key, {}), RegistryStatus::Missing);
    QCOMPARE(scene.folder().names(), QStringList());
}

void tst_registry_files::theUsersFileIsTheUsersAlone()
{
    const RegistryScene scene;
    const auto mask = SystemActions::setFileMask(0);
    QCOMPARE(scene.set(), RegistryStatus::Done);
    SystemActions::setFileMask(mask);
    QCOMPARE(SystemActions::modeOf(scene.userFile()), 0600);
    QCOMPARE(SystemActions::modeOf(scene.userFile() + QStringLiteral("-lock")), 0600);
    QCOMPARE(SystemActions::modeOf(scene.folder().path("user/quorlin")), 0700);
}

void tst_registry_files::theMachinesFileIsForAllToRead()
{
    const RegistryScene scene;
    const auto mask = SystemActions::setFileMask(077);
    scene.write(Machine, "A", "", Text);
    SystemActions::setFileMask(mask);
    QCOMPARE(SystemActions::modeOf(scene.machineFile()), 0644);
    QCOMPARE(SystemActions::modeOf(scene.folder().path("machine/quorlin")), 0755);
}

void tst_registry_files::permissionsThatAreThereStay()
{
    const RegistryScene scene;
    scene.plant({});
    QFile::setPermissions(scene.userFile(), QFile::Permissions(0x6644));
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(SystemActions::modeOf(scene.userFile()), 0644);
}

void tst_registry_files::anEmptyFileIsBegun()
{
    const RegistryScene scene;
    scene.plant({});
    QCOMPARE(scene.get(), RegistryStatus::Missing);
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
    QVERIFY(!QFile::exists(scene.damaged(1)));
}

void tst_registry_files::garbageReadsAsMissing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("text") << QByteArray("this is no database\n").repeated(100);
    QTest::newRow("two bytes") << QByteArray("xy");
    QTest::newRow("zeros") << QByteArray(8192, '\0');
    QTest::newRow("header alone") << QByteArray("SQLite format 3\0", 16);
    QTest::newRow("header and noise")
        << QByteArray("SQLite format 3\0", 16) + QByteArray("\xA5\x5A\x13").repeated(3000);
}

void tst_registry_files::garbageReadsAsMissing()
{
    QFETCH(QByteArray, bytes);
    const RegistryScene scene;
    scene.plant(bytes);
    QVERIFY(scene.get() != RegistryStatus::Done);
    QVERIFY(scene.store()->openKey(Key) != RegistryStatus::Done);
    QCOMPARE(scene.store()->enumerateKeys({User, {}}).result, QStringList());
    QCOMPARE(contentOf(scene.userFile()), bytes);
    QCOMPARE(namesIn(scene.folder().path("user/quorlin")),
             QStringList({QStringLiteral("registry.db")}));
}

void tst_registry_files::theNextWriteSetsADamagedFileAside_data()
{
    garbageReadsAsMissing_data();
}

void tst_registry_files::theNextWriteSetsADamagedFileAside()
{
    QFETCH(QByteArray, bytes);
    const RegistryScene scene;
    scene.plant(bytes);
    expectSetAside(scene, 1, QStringLiteral("(%1|.*malformed|SQL logic error)").arg(NoDatabase));
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
    QCOMPARE(contentOf(scene.damaged(1)), bytes);
    QCOMPARE(SystemActions::modeOf(scene.userFile()), 0600);
}

void tst_registry_files::earlierDamagedFilesAreNeverOverwritten()
{
    const RegistryScene scene;
    for (auto number = 1; number <= 3; ++number) {
        const auto bytes = QByteArray(2000, static_cast<char>('0' + number));
        scene.plant(bytes);
        expectSetAside(scene, number, NoDatabase);
        QCOMPARE(scene.store()->createKey(Key), RegistryStatus::Done);
        QCOMPARE(contentOf(scene.damaged(number)), bytes);
    }
    QCOMPARE(contentOf(scene.damaged(1)), QByteArray(2000, '1'));
}

void tst_registry_files::whatBelongsToADamagedFileGoesWithIt()
{
    const RegistryScene scene;
    scene.plant(QByteArray(2000, 'x'));
    scene.folder().write("user/quorlin/registry.db-wal", "log");
    scene.folder().write("user/quorlin/registry.db-journal", "journal");
    expectSetAside(scene, 1, NoDatabase);
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(contentOf(scene.damaged(1)), QByteArray(2000, 'x'));
    QCOMPARE(contentOf(scene.damaged(1) + QStringLiteral("-wal")), QByteArray("log"));
    QVERIFY(!QFile::exists(scene.userFile() + QStringLiteral("-wal")));
    QVERIFY(!QFile::exists(scene.userFile() + QStringLiteral("-journal")));
}

void tst_registry_files::whatALostFileLeftIsSetAside()
{
    const RegistryScene scene;
    scene.folder().write("user/quorlin/registry.db-wal", "log");
    scene.folder().write("user/quorlin/registry.db-journal", "journal");
    expectSetAside(scene, 1, Lost);
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
    QCOMPARE(contentOf(scene.damaged(1) + QStringLiteral("-wal")), QByteArray("log"));
    QCOMPARE(contentOf(scene.damaged(1) + QStringLiteral("-journal")), QByteArray("journal"));
}

void tst_registry_files::deletingLeavesADamagedFile()
{
    const RegistryScene scene;
    const QByteArray bytes(2000, 'x');
    scene.plant(bytes);
    QCOMPARE(scene.store()->deleteValue(Key, {}), RegistryStatus::Damaged);
    QCOMPARE(scene.store()->deleteKey(Key), RegistryStatus::Damaged);
    QCOMPARE(contentOf(scene.userFile()), bytes);
}

void tst_registry_files::spoiltPagesCountAsDamage()
{
    const RegistryScene scene;
    scene.fill();
    auto bytes = contentOf(scene.userFile());
    QVERIFY(bytes.size() > 3 * 4096);
    // The header stays whole, everything behind the first page does not.
    bytes.replace(4096, bytes.size() - 4096, QByteArray(bytes.size() - 4096, '\x5A'));
    scene.plant(bytes);
    QCOMPARE(scene.store()->queryValue(Key, QStringLiteral("3")).status, RegistryStatus::Damaged);
    expectSetAside(scene);
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
    QCOMPARE(contentOf(scene.damaged(1)), bytes);
}

void tst_registry_files::aCutFileCountsAsDamage()
{
    const RegistryScene scene;
    scene.fill();
    const auto whole = contentOf(scene.userFile());
    auto number = 0;
    for (const auto size : {whole.size() / 2, qsizetype(4096), qsizetype(50)}) {
        scene.plant(whole.left(size));
        QCOMPARE(scene.store()->queryValue(Key, QStringLiteral("29")).status,
                 RegistryStatus::Damaged);
        expectSetAside(scene, ++number, QStringLiteral(".*(malformed|not a database)"));
        QCOMPARE(scene.set(), RegistryStatus::Done);
        QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
    }
    QCOMPARE(contentOf(scene.damaged(3)), whole.left(50));
}

void tst_registry_files::missingTablesCountAsDamage()
{
    const RegistryScene scene;
    QCOMPARE(scene.set(), RegistryStatus::Done);
    runSql(scene.userFile(), "DROP TABLE registry_value");
    QCOMPARE(scene.get(), RegistryStatus::Damaged);
    expectSetAside(scene, 1, QStringLiteral("SQL logic error"));
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
    QVERIFY(QFile::exists(scene.damaged(1)));
}

void tst_registry_files::aReadOnlyFileIsReadAndNotWritten()
{
    const RegistryScene scene;
    scene.admitOrdinaryUser();
    const OrdinaryUser user;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    QVERIFY(QFile::setPermissions(scene.userFile(), QFile::ReadOwner));
    QCOMPARE(scene.set(), RegistryStatus::Denied);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
}

void tst_registry_files::aReadOnlyFolderIsReadAndNotWritten()
{
    const RegistryScene scene;
    scene.admitOrdinaryUser();
    const OrdinaryUser user;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    const auto folder = scene.folder().path("user/quorlin");
    QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(scene.set(), RegistryStatus::Denied);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(scene.set(), RegistryStatus::Done);
}

void tst_registry_files::anUnreadableFileIsMissing()
{
    const RegistryScene scene;
    scene.admitOrdinaryUser();
    const OrdinaryUser user;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    QVERIFY(QFile::setPermissions(scene.userFile(), QFile::Permissions()));
    QCOMPARE(scene.get(), RegistryStatus::Denied);
    QCOMPARE(scene.set(), RegistryStatus::Denied);
    QVERIFY(!QFile::exists(scene.damaged(1)));
}

void tst_registry_files::whatIsNoFileIsLeftAlone_data()
{
    QTest::addColumn<QString>("kind");
    for (const auto *kind : {"folder", "pipe", "device", "link to nowhere"})
        QTest::newRow(kind) << QString::fromUtf8(kind);
}

void tst_registry_files::whatIsNoFileIsLeftAlone()
{
    QFETCH(QString, kind);
    const RegistryScene scene;
    scene.folder().makeFolder("user/quorlin");
    const auto path = scene.userFile();
    if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkpath(path));
    else if (kind == QLatin1String("pipe"))
        QVERIFY(SystemActions::makeFifo(path));
    else
        QVERIFY(QFile::link(kind == QLatin1String("device") ? SystemActions::nullDevice()
                                                            : scene.folder().path("none"),
                            path));
    QCOMPARE(scene.get(), RegistryStatus::Unusable);
    QCOMPARE(scene.set(), RegistryStatus::Unusable);
    QCOMPARE(scene.store()->deleteKey(Key), RegistryStatus::Unusable);
    QVERIFY(!QFile::exists(scene.folder().path("none")));
    QVERIFY(!QFile::exists(scene.damaged(1)));
}

void tst_registry_files::aLinkLeadsToTheFile()
{
    const RegistryScene scene;
    scene.folder().makeFolder("user/quorlin");
    const auto target = scene.folder().write("elsewhere/mine.db", {});
    QVERIFY(QFile::link(target, scene.userFile()));
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
    QVERIFY(contentOf(target).startsWith("SQLite format 3"));
    QCOMPARE(QFile::symLinkTarget(scene.userFile()), target);
}

void tst_registry_files::aDamagedLinkIsSetAsideAndItsTargetStays()
{
    const RegistryScene scene;
    scene.folder().makeFolder("user/quorlin");
    const QByteArray bytes(2000, 'x');
    const auto target = scene.folder().write("elsewhere/mine.db", bytes);
    QVERIFY(QFile::link(target, scene.userFile()));
    expectSetAside(scene, 1, NoDatabase);
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(contentOf(target), bytes);
    QCOMPARE(QFile::symLinkTarget(scene.damaged(1)), target);
}

void tst_registry_files::aNewerFileIsLeftAlone()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    runSql(scene.userFile(), "PRAGMA user_version = 2");
    const auto bytes = contentOf(scene.userFile());
    QCOMPARE(scene.get(), RegistryStatus::Unusable);
    QCOMPARE(scene.set(), RegistryStatus::Unusable);
    QCOMPARE(scene.store()->deleteKey(Key), RegistryStatus::Unusable);
    QCOMPARE(contentOf(scene.userFile()), bytes);
    QVERIFY(!QFile::exists(scene.damaged(1)));
}

void tst_registry_files::aForeignDatabaseIsLeftAlone()
{
    for (const auto *sql : {"CREATE TABLE other (a); INSERT INTO other VALUES (1)",
                            "PRAGMA application_id = 7", "PRAGMA user_version = 1"}) {
        const RegistryScene scene;
        scene.folder().makeFolder("user/quorlin");
        runSql(scene.userFile(), sql);
        const auto bytes = contentOf(scene.userFile());
        QCOMPARE(scene.get(), RegistryStatus::Unusable);
        QCOMPARE(scene.set(), RegistryStatus::Unusable);
        QCOMPARE(contentOf(scene.userFile()), bytes);
        QVERIFY(!QFile::exists(scene.damaged(1)));
    }
}

void tst_registry_files::aDatabaseWithItsOwnCodeRunsNone()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    runSql(scene.userFile(), "CREATE TRIGGER spoil AFTER UPDATE ON registry_value BEGIN "
                             "UPDATE registry_value SET name = 'spoilt'; END");
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(scene.store()->enumerateValues(Key).result, QStringList({QString()}));
    runSql(scene.userFile(), "ALTER TABLE registry_value RENAME TO hidden;"
                             "CREATE VIEW registry_value AS SELECT * FROM hidden");
    QCOMPARE(scene.get(), RegistryStatus::Damaged);
}

/// A column that is computed for every row that is read.
void tst_registry_files::aDatabaseThatComputesForEverIsLeft()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    runSql(scene.userFile(),
           "DROP TABLE registry_key; CREATE TABLE registry_key (path TEXT, parent TEXT);"
           "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000) "
           "INSERT INTO registry_key (path, parent) SELECT 'p' || i, 'a' FROM n;"
           "INSERT INTO registry_key (path, parent) VALUES ('a', '');"
           "ALTER TABLE registry_key ADD COLUMN name TEXT "
           "GENERATED ALWAYS AS (length(hex(zeroblob(4000000 + length(path)))))");
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(scene.store()->enumerateKeys(Key).status, RegistryStatus::Busy);
    QVERIFY(timer.elapsed() < RegistryScene::Bound);
}

void tst_registry_files::hugeValuesAreRefused()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    QCOMPARE(scene.set(QByteArray(SqliteConnection::MostValueBytes + 1, 'x')),
             RegistryStatus::Failed);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    runSql(scene.userFile(), "UPDATE registry_value SET data = zeroblob(20000000)");
    QVERIFY(scene.get() != RegistryStatus::Done);
}

void tst_registry_files::aFullDiskLosesNothing()
{
    const TestFolder folder;
    folder.makeFolder("disk");
    const SmallDisk disk(folder.path("disk"), 100);
    if (!disk.isMounted())
        QSKIP("this user may not mount");
    LayeredRegistry store(folder.path("disk/registry.db"), folder.path("none"));
    const RegistryValue value{RegistryType::Binary, QByteArray(4000, 'x')};
    auto written = 0;
    while (store.setValue(Key, QString::number(written), value) == RegistryStatus::Done)
        ++written;
    QVERIFY(written > 3);
    for (auto number = 0; number < written; ++number)
        QCOMPARE(store.queryValue(Key, QString::number(number)).result, value);
    QCOMPARE(store.enumerateValues(Key).result.size(), written);
    QCOMPARE(store.setValue(Key, QString::number(written), value), RegistryStatus::Failed);
}

QTEST_GUILESS_MAIN(tst_registry_files)
#include "tst_registry_files.moc"
