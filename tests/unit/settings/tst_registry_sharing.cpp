#include "settings/LayeredRegistry.h"
#include "settings/WriterLock.h"

#include "RegistryScene.h"
#include "support/SystemActions.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>
#include <thread>

#include <sqlite3.h>

using namespace Quorlin;

namespace {

constexpr auto User = RegistryRoot::CurrentUser;
constexpr auto Machine = RegistryRoot::LocalMachine;

const auto Key = RegistryScene::key();
const auto Text = QStringLiteral("text");

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

QString elapsed(const QElapsedTimer &timer)
{
    return QString::number(timer.elapsed());
}

/// Writes its number into an order that the lock guards, and keeps each turn until the other
/// writer stands behind it.
class TakingTurns
{
public:
    static constexpr int Turns = 200;

    explicit TakingTurns(const QString &path) : m_path(path) {}

    void write(int number)
    {
        for (auto turn = 0; turn < Turns; ++turn) {
            const WriterLock lock(m_path, QDeadlineTimer(10000));
            if (lock.state() != WriterLock::State::Held || !othersWait())
                break;
            order.append(number);
        }
        m_hasEnded = true;
    }

    QList<int> order;

private:
    /// Who is next holds the first byte of the file.
    [[nodiscard]] bool othersWait() const
    {
        const QDeadlineTimer deadline(10000);
        while (!m_hasEnded && !SystemActions::isLocked(m_path, 0)) {
            if (deadline.hasExpired())
                return false;
            std::this_thread::yield();
        }
        return true;
    }

    QString m_path;
    std::atomic<bool> m_hasEnded = false; // one of them
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
    void manyReadsOfALockedFileWaitOnce();
    void aWriteWaitsLongerThanAReadAlsoForABusyFile();
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
    QCOMPARE(scene.set(), RegistryStatus::Done);
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
    scene.fill();
    QCOMPARE(namesIn(scene.folder().path("user/quorlin")),
             QStringList({QStringLiteral("registry.db"), QStringLiteral("registry.db-lock")}));
}

void tst_registry_sharing::noHandleStaysOpen()
{
    const RegistryScene scene;
    scene.fill();
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
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    {
        const Holder holder(scene.userFile(), "BEGIN EXCLUSIVE");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(scene.get(), RegistryStatus::Busy);
        QVERIFY(timer.restart() < RegistryScene::Bound);
        QCOMPARE(scene.set(), RegistryStatus::Busy);
        QVERIFY(timer.restart() < RegistryScene::Bound);
        // Both layers share one time to wait.
        QCOMPARE(scene.store()->openKey({RegistryRoot::ClassesRoot, Text}), RegistryStatus::Busy);
        QVERIFY(timer.elapsed() < RegistryScene::Bound);
    }
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    QVERIFY(!QFile::exists(scene.damaged(1)));
}

/// A program reads many settings when it starts.
void tst_registry_sharing::manyReadsOfALockedFileWaitOnce()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    scene.write(Machine, "A", "", Text);
    {
        const Holder holder(scene.userFile(), "BEGIN EXCLUSIVE");
        QElapsedTimer timer;
        timer.start();
        for (auto number = 0; number < 5; ++number) {
            QCOMPARE(scene.get(), RegistryStatus::Busy);
            QCOMPARE(scene.store()->openKey(Key), RegistryStatus::Busy);
            QCOMPARE(scene.store()->enumerateKeys(Key).status, RegistryStatus::Busy);
            QCOMPARE(scene.store()->enumerateValues(Key).status, RegistryStatus::Busy);
        }
        QVERIFY2(timer.elapsed() < RegistryScene::Bound, qPrintable(elapsed(timer)));
        QCOMPARE(scene.read(Machine, "A"), Text);
    }
    QTRY_COMPARE(scene.get(), RegistryStatus::Done);
}

void tst_registry_sharing::aWriteWaitsLongerThanAReadAlsoForABusyFile()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    {
        const Holder holder(scene.userFile(), "BEGIN EXCLUSIVE");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(scene.get(), RegistryStatus::Busy);
        const auto readTime = timer.restart();
        QCOMPARE(scene.set(), RegistryStatus::Busy);
        QVERIFY2(timer.elapsed() >= 1000, qPrintable(elapsed(timer)));
        QVERIFY2(timer.elapsed() > 2 * readTime, qPrintable(QString::number(readTime)));
    }
    QCOMPARE(scene.set(), RegistryStatus::Done);
}

void tst_registry_sharing::aFileThatSomebodyReadsIsNotWritten()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    {
        const Holder holder(scene.userFile(), "BEGIN; SELECT count(*) FROM registry_key");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(scene.set(), RegistryStatus::Busy);
        QVERIFY(timer.elapsed() < RegistryScene::Bound);
    }
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    QCOMPARE(scene.set(), RegistryStatus::Done);
}

void tst_registry_sharing::aFileThatSomebodyWritesCanBeRead()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    const Holder holder(scene.userFile(),
                        "BEGIN IMMEDIATE; UPDATE registry_value SET data = 'half'");
    QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
}

void tst_registry_sharing::anotherWriterIsWaitedForAndNotForEver()
{
    const RegistryScene scene;
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    {
        const WriterLock lock(scene.userFile() + QStringLiteral("-lock"), QDeadlineTimer(0));
        QCOMPARE(lock.state(), WriterLock::State::Held);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(scene.set(), RegistryStatus::Busy);
        QVERIFY(timer.elapsed() >= 1000);
        QVERIFY(timer.elapsed() < RegistryScene::Bound);
        QCOMPARE(scene.read(User, "A"), QStringLiteral("old"));
    }
    QCOMPARE(scene.set(), RegistryStatus::Done);
}

/// Who asks again at once would else win almost every time against one who sleeps and looks.
void tst_registry_sharing::waitingWritersTakeTurns()
{
    const TestFolder folder;
    TakingTurns turns(folder.path("lock"));
    const std::unique_ptr<QThread> first(QThread::create([&turns] { turns.write(1); }));
    const std::unique_ptr<QThread> second(QThread::create([&turns] { turns.write(2); }));
    first->start();
    second->start();
    QVERIFY(first->wait(30000));
    QVERIFY(second->wait(30000));
    QCOMPARE(turns.order.size(), 2 * TakingTurns::Turns);
    for (auto at = 1; at < turns.order.size(); ++at)
        QVERIFY2(turns.order.at(at) != turns.order.at(at - 1), qPrintable(QString::number(at)));
}

void tst_registry_sharing::aLockThatIsNoFileDeniesWriting()
{
    const RegistryScene scene;
    scene.folder().makeFolder("user/quorlin");
    QVERIFY(SystemActions::makeFifo(scene.userFile() + QStringLiteral("-lock")));
    QCOMPARE(scene.set(), RegistryStatus::Denied);
    QCOMPARE(scene.get(), RegistryStatus::Missing);
}

/// The journal of a writer that is gone holds what was there before.
void tst_registry_sharing::aHalfDoneWriteIsUndoneByTheNextReader()
{
    const RegistryScene scene;
    scene.fill();
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
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
    scene.plant(half);
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
    QCOMPARE(scene.set("old"), RegistryStatus::Done);
    runSql(scene.userFile(), "PRAGMA journal_mode = WAL");
    const Holder holder(scene.userFile(), "UPDATE registry_value SET data = 'logged'");
    QCOMPARE(scene.read(User, "A"), QStringLiteral("logged"));
    QCOMPARE(scene.set(), RegistryStatus::Done);
    QCOMPARE(scene.read(User, "A"), QStringLiteral("new"));
}

QTEST_GUILESS_MAIN(tst_registry_sharing)
#include "tst_registry_sharing.moc"
