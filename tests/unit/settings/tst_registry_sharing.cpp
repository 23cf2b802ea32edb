#include "settings/LayeredRegistry.h"
#include "settings/WriterLock.h"

#include "RegistryScene.h"
#include "support/SystemActions.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QThread>

#include <chrono>
#include <thread>

#include <sqlite3.h>

using namespace Quorlin;

namespace {

constexpr auto User = RegistryRoot::CurrentUser;
constexpr auto Machine = RegistryRoot::LocalMachine;

/// What an operation may take that waits for somebody else, in milliseconds.
constexpr qint64 Bound = 4000;

const RegistryKey Key{User, QStringLiteral("A")};
const auto Text = QStringLiteral("text");

RegistryStatus set(const RegistryScene &scene, const QByteArray &value = "new")
{
    return scene.store()->setValue(Key, {}, {RegistryType::Text, value});
}

RegistryStatus get(const RegistryScene &scene)
{
    return scene.store()->queryValue(Key, {}).status;
}

/// Puts bytes in the place of the user's file.
void plant(const RegistryScene &scene, const QByteArray &bytes)
{
    scene.folder().write("user/quorlin/registry.db", bytes);
}

QString damaged(const RegistryScene &scene, int number)
{
    return scene.userFile() + QStringLiteral(".damaged-%1").arg(number);
}

/// A database with enough in it that pages can be spoilt.
void fill(const RegistryScene &scene)
{
    for (auto number = 0; number < 30; ++number)
        scene.write(User, "A", QByteArray::number(number), QString(500, QLatin1Char('x')));
}

/// A connection of another program that holds the user's file.
class Holder
{
public:
    Holder(const QString &file, const char *sql)
    {
        if (sqlite3_open(file.toUtf8().constData(), &m_connection) != SQLITE_OK ||
            sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            qFatal("cannot hold a database");
    }
    ~Holder() { sqlite3_close(m_connection); }
    Holder(const Holder &) = delete;
    Holder &operator=(const Holder &) = delete;

private:
    sqlite3 *m_connection = nullptr;
};

} // namespace

class tst_registry_sharing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aJournalHasThePermissionsOfItsFile();
    void nothingIsLeftBesideTheFile();
    void noHandleStaysOpen();
    void aLockedFileReadsAsMissingAndIsNotWritten();
    void aFileThatSomebodyReadsIsNotWritten();
    void aFileThatSomebodyWritesCanBeRead();
    void anotherWriterIsWaitedForAndNotForEver();
    void waitingWritersTakeTurns();
    void aLockThatIsNoFileDeniesWriting();
    void aHalfDoneWriteIsUndoneByTheNextReader();
    void aHalfDoneWriteOfTheMachineReadsAsMissingForOthers();
    void aWriteAheadLogIsRead();
};

void tst_registry_sharing::aJournalHasThePermissionsOfItsFile()
{
    const RegistryScene scene;
    const auto mask = SystemActions::setFileMask(0);
    QCOMPARE(set(scene), RegistryStatus::Done);
    const auto journal = scene.userFile() + QStringLiteral("-journal");
    {
        const Holder holder(scene.userFile(),
                            "PRAGMA cache_size = 1; BEGIN; PRAGMA cache_spill = 1;"
                            "UPDATE registry_value SET data = 'x'");
        QVERIFY(QFile::exists(journal));
        QCOMPARE(SystemActions::modeOf(journal), 0600);
    }
    runSql(scene.userFile(), "PRAGMA journal_mode = WAL");
    {
        const Holder holder(scene.userFile(), "UPDATE registry_value SET data = 'y'");
        QCOMPARE(SystemActions::modeOf(scene.userFile() + QStringLiteral("-wal")), 0600);
        QCOMPARE(SystemActions::modeOf(scene.userFile() + QStringLiteral("-shm")), 0600);
    }
    SystemActions::setFileMask(mask);
}

void tst_registry_sharing::nothingIsLeftBesideTheFile()
{
    const RegistryScene scene;
    fill(scene);
    QCOMPARE(namesIn(scene.folder().path("user/quorlin")),
             QStringList({QStringLiteral("registry.db"), QStringLiteral("registry.db-lock")}));
}

void tst_registry_sharing::noHandleStaysOpen()
{
    const RegistryScene scene;
    fill(scene);
    scene.write(Machine, "A", "", Text);
    static_cast<void>(scene.store()->enumerateValues(Key));
    static_cast<void>(scene.store()->deleteValue(Key, {}));
    const QDir handles(QStringLiteral("/proc/self/fd"));
    const auto names = handles.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    QVERIFY(!names.isEmpty());
    for (const auto &name : names)
        QVERIFY(!QFile::symLinkTarget(handles.filePath(name)).startsWith(scene.folder().path()));
}

void tst_registry_sharing::aLockedFileReadsAsMissingAndIsNotWritten()
{
    const RegistryScene scene;
    QCOMPARE(set(scene, "old"), RegistryStatus::Done);
    {
        const Holder holder(scene.userFile(), "BEGIN EXCLUSIVE");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(get(scene), RegistryStatus::Busy);
        QVERIFY(timer.restart() < Bound);
        QCOMPARE(set(scene), RegistryStatus::Busy);
        QVERIFY(timer.restart() < Bound);
        // Both layers share one time to wait.
        QCOMPARE(scene.store()->openKey({RegistryRoot::ClassesRoot, Text}), RegistryStatus::Busy);
        QVERIFY(timer.elapsed() < Bound);
    }
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    QVERIFY(!QFile::exists(damaged(scene, 1)));
}

void tst_registry_sharing::aFileThatSomebodyReadsIsNotWritten()
{
    const RegistryScene scene;
    QCOMPARE(set(scene, "old"), RegistryStatus::Done);
    {
        const Holder holder(scene.userFile(), "BEGIN; SELECT count(*) FROM registry_key");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(set(scene), RegistryStatus::Busy);
        QVERIFY(timer.elapsed() < Bound);
    }
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    QCOMPARE(set(scene), RegistryStatus::Done);
}

void tst_registry_sharing::aFileThatSomebodyWritesCanBeRead()
{
    const RegistryScene scene;
    QCOMPARE(set(scene, "old"), RegistryStatus::Done);
    const Holder holder(scene.userFile(),
                        "BEGIN IMMEDIATE; UPDATE registry_value SET data = 'half'");
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
}

void tst_registry_sharing::anotherWriterIsWaitedForAndNotForEver()
{
    const RegistryScene scene;
    QCOMPARE(set(scene, "old"), RegistryStatus::Done);
    {
        const WriterLock lock(scene.userFile() + QStringLiteral("-lock"), QDeadlineTimer(0));
        QCOMPARE(lock.state(), WriterLock::State::Held);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(set(scene), RegistryStatus::Busy);
        QVERIFY(timer.elapsed() >= 1000);
        QVERIFY(timer.elapsed() < Bound);
        QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    }
    QCOMPARE(set(scene), RegistryStatus::Done);
}

/// Who asks again at once would else win almost every time against one who sleeps and looks.
void tst_registry_sharing::waitingWritersTakeTurns()
{
    constexpr auto each = 200;
    const TestFolder folder;
    const auto path = folder.path("lock");
    QList<int> order; // guarded by the lock itself
    const auto writer = [&](int number) {
        return std::unique_ptr<QThread>(QThread::create([&order, &path, number] {
            for (auto round = 0; round < each; ++round) {
                const WriterLock lock(path, QDeadlineTimer(10000));
                if (lock.state() == WriterLock::State::Held)
                    order.append(number);
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        }));
    };
    const auto first = writer(1);
    const auto second = writer(2);
    first->start();
    second->start();
    QVERIFY(first->wait(30000));
    QVERIFY(second->wait(30000));
    QCOMPARE(order.size(), 2 * each);
    auto changes = 0;
    for (auto at = 1; at < order.size(); ++at)
        changes += order.at(at) == order.at(at - 1) ? 0 : 1;
    QVERIFY2(changes > each, QByteArray::number(changes).constData());
}

void tst_registry_sharing::aLockThatIsNoFileDeniesWriting()
{
    const RegistryScene scene;
    scene.folder().makeFolder("user/quorlin");
    QVERIFY(SystemActions::makeFifo(scene.userFile() + QStringLiteral("-lock")));
    QCOMPARE(set(scene), RegistryStatus::Denied);
    QCOMPARE(get(scene), RegistryStatus::Missing);
}

/// The journal of a writer that is gone holds what was there before.
void tst_registry_sharing::aHalfDoneWriteIsUndoneByTheNextReader()
{
    const RegistryScene scene;
    fill(scene);
    QCOMPARE(set(scene, "old"), RegistryStatus::Done);
    const auto whole = contentOf(scene.userFile());
    QByteArray half;
    QByteArray journal;
    {
        const Holder holder(scene.userFile(),
                            "PRAGMA cache_size = 1; BEGIN IMMEDIATE;"
                            "UPDATE registry_value SET data = hex(zeroblob(3000))");
        half = contentOf(scene.userFile());
        journal = contentOf(scene.userFile() + QStringLiteral("-journal"));
    }
    QVERIFY(half != whole);
    plant(scene, half);
    scene.folder().write("user/quorlin/registry.db-journal", journal);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    QVERIFY(!QFile::exists(scene.userFile() + QStringLiteral("-journal")));
}

void tst_registry_sharing::aHalfDoneWriteOfTheMachineReadsAsMissingForOthers()
{
    const RegistryScene scene;
    scene.write(Machine, "A", "", Text);
    const auto file = scene.machineFile();
    QByteArray half;
    QByteArray journal;
    {
        const Holder holder(file, "PRAGMA cache_size = 1; BEGIN IMMEDIATE;"
                                  "UPDATE registry_value SET data = hex(zeroblob(90000))");
        half = contentOf(file);
        journal = contentOf(file + QStringLiteral("-journal"));
    }
    scene.folder().write("machine/quorlin/registry.db", half);
    scene.folder().write("machine/quorlin/registry.db-journal", journal);
    scene.admitOrdinaryUser();
    {
        const OrdinaryUser user;
        QCOMPARE(scene.read(Machine, "A"), std::nullopt);
    }
    scene.admitOwner();
    QCOMPARE(scene.read(Machine, "A"), Text);
}

void tst_registry_sharing::aWriteAheadLogIsRead()
{
    const RegistryScene scene;
    QCOMPARE(set(scene, "old"), RegistryStatus::Done);
    runSql(scene.userFile(), "PRAGMA journal_mode = WAL");
    const Holder holder(scene.userFile(), "UPDATE registry_value SET data = 'logged'");
    QCOMPARE(scene.read(User, "A"), QStringLiteral("logged"));
    QCOMPARE(set(scene), RegistryStatus::Done);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
}

QTEST_GUILESS_MAIN(tst_registry_sharing)
#include "tst_registry_sharing.moc"
