#include "component/supervisor/WorkerPool.h"

#include "component/supervisor/JsonWorker.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds

struct Done
{
    int number;
    Reason reason;
    QString text;
    qint64 process;
};

} // namespace

class TestWorkerPool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void servesInTheOrderOfArrival();
    void startsNoWorkerWithoutWork();
    void keepsAWorkerWarm();
    void neverHasMoreWorkersThanItMay();
    void mayBeResized();
    void worksSideBySide();
    void waitsForManyTasksBeforeItStartsAnotherWorker();
    void replacesAWorkerAfterANumberOfTasks();
    void replacesAWorkerThatDied();
    void aTaskThatKillsItsWorkerCostsNoOtherOne();
    void replacesAWorkerThatDiedWhileIdle();
    void aWorkerServesTasksOfItsKeyOnly();
    void aFreeWorkerOfAnotherKeyGivesWay();
    void aTaskMayWantAWorkerStartedLater();
    void aWorkerThatCannotStartFailsOneTaskAtATime();
    void aMissingProgramFailsEveryTaskWithItsName();
    void warmStartsOneWorker();
    void warmKeepsTheWorkerThatIsThere();
    void endsIdleWorkers();
    void aWorkerThatIsAtWorkIsNotIdle();
    void shutDownCancelsEverything();
    void shutDownDoesNotWaitForAWorkerThatIsStarting();
    void shutDownEndsTheProcesses();
    void answersNeverComeBeforeSubmitReturns();

private:
    void make(WorkerPool::Settings settings);
    void submit(const char *op, WorkerTask task = {});
    bool waitForAnswers(qsizetype count);
    [[nodiscard]] QList<int> order() const;
    [[nodiscard]] QSet<qint64> processes() const;
    void let(const char *sign) { m_folder->write(sign, ""); }

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<WorkerPool> m_pool;
    QString m_greeting;
    QString m_waitFor;
    QList<Done> m_done;
    int m_submitted = 0;
    int m_started = 0;
};

void TestWorkerPool::init()
{
    m_folder = std::make_unique<TestFolder>();
    QVERIFY(QFile::link(QStringLiteral(QUORLIN_STAND_IN_WORKER), m_folder->path("worker")));
    m_greeting = QStringLiteral("proper");
    m_waitFor = m_folder->path("go");
    m_done.clear();
    m_submitted = 0;
    m_started = 0;
}

void TestWorkerPool::cleanup()
{
    m_pool.reset();
    m_folder.reset();
}

void TestWorkerPool::make(WorkerPool::Settings settings)
{
    m_pool = std::make_unique<WorkerPool>(settings, [this](const WorkerTask &) {
        ++m_started;
        auto worker = std::make_unique<JsonWorker>(
            m_folder->path("worker"), QStringList{QStringLiteral("--greeting"), m_greeting},
            QStringLiteral("the worker"));
        worker->setPlace(
            m_folder->makeFolder(QByteArray("place-") + QByteArray::number(m_started)));
        return worker;
    });
}

void TestWorkerPool::submit(const char *op, WorkerTask task)
{
    const QJsonObject request{{QStringLiteral("op"), QLatin1String(op)},
                              {QStringLiteral("file"), m_waitFor}};
    task.request = [request](const QString &) { return request; };
    task.finished = [this, number = m_submitted++](const WorkerAnswer &answer) {
        m_done.append({number, answer.reason, answer.text,
                       answer.values.value(QLatin1String("pid")).toInteger()});
    };
    m_pool->submit(std::move(task));
}

bool TestWorkerPool::waitForAnswers(qsizetype count)
{
    return QTest::qWaitFor([&] { return m_done.size() >= count; }, Patience);
}

QList<int> TestWorkerPool::order() const
{
    QList<int> numbers;
    for (const auto &done : m_done)
        numbers.append(done.number);
    return numbers;
}

QSet<qint64> TestWorkerPool::processes() const
{
    QSet<qint64> found;
    for (const auto &done : m_done)
        found.insert(done.process);
    return found;
}

void TestWorkerPool::servesInTheOrderOfArrival()
{
    make({.maxWorkers = 1});
    for (int i = 0; i < 5; ++i)
        submit("echo");
    QVERIFY(waitForAnswers(5));
    QCOMPARE(order(), QList<int>({0, 1, 2, 3, 4}));
    QCOMPARE(m_started, 1);
    QCOMPARE(processes().size(), 1);
}

void TestWorkerPool::startsNoWorkerWithoutWork()
{
    make({.maxWorkers = 3});
    QTest::qWait(50);
    QCOMPARE(m_pool->workerCount(), 0);
    QCOMPARE(m_pool->generation(), 0);
}

void TestWorkerPool::keepsAWorkerWarm()
{
    make({.maxWorkers = 1});
    for (int i = 1; i <= 3; ++i) {
        submit("echo");
        QVERIFY(waitForAnswers(i));
    }
    QCOMPARE(m_started, 1);
    QCOMPARE(m_pool->workerCount(), 1);
}

void TestWorkerPool::neverHasMoreWorkersThanItMay()
{
    make({.maxWorkers = 2});
    for (int i = 0; i < 8; ++i)
        submit("wait-for");
    QVERIFY(QTest::qWaitFor([this] { return m_pool->workerCount() == 2; }, Patience));
    let("go");
    QVERIFY(waitForAnswers(8));
    QCOMPARE(m_started, 2);
    QCOMPARE(processes().size(), 2);
}

void TestWorkerPool::mayBeResized()
{
    make({.maxWorkers = 1, .waitingPerWorker = 8});
    for (int i = 0; i < 4; ++i)
        submit("wait-for");
    QVERIFY(QTest::qWaitFor([this] { return m_pool->workerCount() == 1; }, Patience));
    m_pool->resize(3, 1);
    QVERIFY(QTest::qWaitFor([this] { return m_pool->workerCount() == 3; }, Patience));
    let("go");
    QVERIFY(waitForAnswers(4));
    QCOMPARE(m_started, 3);
}

void TestWorkerPool::worksSideBySide()
{
    make({.maxWorkers = 2});
    submit("wait-for");
    submit("echo"); // done while the first one still waits
    QVERIFY(waitForAnswers(1));
    QCOMPARE(order(), QList<int>{1});
    let("go");
    QVERIFY(waitForAnswers(2));
    QCOMPARE(processes().size(), 2);
}

void TestWorkerPool::waitsForManyTasksBeforeItStartsAnotherWorker()
{
    make({.maxWorkers = 2, .waitingPerWorker = 4});
    for (int i = 0; i < 4; ++i)
        submit("wait-for");
    QVERIFY(QTest::qWaitFor([this] { return m_pool->workerCount() == 1; }, Patience));
    QTest::qWait(300); // another one would be there by now
    QCOMPARE(m_started, 1);
    submit("wait-for");
    QVERIFY(QTest::qWaitFor([this] { return m_pool->workerCount() == 2; }, Patience));
    let("go");
    QVERIFY(waitForAnswers(5));
}

void TestWorkerPool::replacesAWorkerAfterANumberOfTasks()
{
    make({.maxWorkers = 1, .tasksPerWorker = 2});
    for (int i = 0; i < 5; ++i)
        submit("echo");
    QVERIFY(waitForAnswers(5));
    QCOMPARE(order(), QList<int>({0, 1, 2, 3, 4}));
    QCOMPARE(m_started, 3);
    QCOMPARE(processes().size(), 3);
}

void TestWorkerPool::replacesAWorkerThatDied()
{
    make({.maxWorkers = 1});
    submit("die");
    submit("echo");
    QVERIFY(waitForAnswers(2));
    QCOMPARE(m_done[0].reason, Reason::EngineFailed);
    QCOMPARE(m_done[1].reason, Reason::None);
    QCOMPARE(m_started, 2);
}

void TestWorkerPool::aTaskThatKillsItsWorkerCostsNoOtherOne()
{
    make({.maxWorkers = 2});
    for (int i = 0; i < 12; ++i)
        submit(i % 3 == 1 ? "die" : "echo");
    QVERIFY(waitForAnswers(12));
    QCOMPARE(m_done.size(), 12);
    for (const auto &done : m_done)
        QCOMPARE(done.reason, done.number % 3 == 1 ? Reason::EngineFailed : Reason::None);
}

void TestWorkerPool::replacesAWorkerThatDiedWhileIdle()
{
    make({.maxWorkers = 1});
    submit("echo");
    QVERIFY(waitForAnswers(1));
    SystemActions::kill(m_done[0].process);
    QVERIFY(QTest::qWaitFor([this] { return m_pool->workerCount() == 0; }, Patience));
    submit("echo");
    QVERIFY(waitForAnswers(2));
    QCOMPARE(m_done[1].reason, Reason::None);
}

void TestWorkerPool::aWorkerServesTasksOfItsKeyOnly()
{
    make({.maxWorkers = 2});
    for (const char *key : {"a", "b", "a", "b", "a"})
        submit("echo", {.key = QString::fromLatin1(key)});
    QVERIFY(waitForAnswers(5));
    QSet<qint64> a, b;
    for (const auto &done : m_done)
        (done.number % 2 == 0 ? a : b).insert(done.process);
    QVERIFY(!a.intersects(b));
}

void TestWorkerPool::aFreeWorkerOfAnotherKeyGivesWay()
{
    make({.maxWorkers = 1});
    for (const char *key : {"a", "b", "c"})
        submit("echo", {.key = QString::fromLatin1(key)});
    QVERIFY(waitForAnswers(3));
    QCOMPARE(processes().size(), 3);
    QCOMPARE(m_pool->workerCount(), 1);
}

void TestWorkerPool::aTaskMayWantAWorkerStartedLater()
{
    make({.maxWorkers = 1});
    submit("echo");
    QVERIFY(waitForAnswers(1));
    submit("echo", {.after = m_pool->generation()});
    QVERIFY(waitForAnswers(2));
    QVERIFY(m_done[1].process != m_done[0].process);
    submit("echo", {.after = 1}); // the second one is late enough
    QVERIFY(waitForAnswers(3));
    QCOMPARE(m_done[2].process, m_done[1].process);
}

void TestWorkerPool::aWorkerThatCannotStartFailsOneTaskAtATime()
{
    m_greeting = QStringLiteral("unavailable");
    make({.maxWorkers = 1});
    for (int i = 0; i < 3; ++i)
        submit("echo");
    QVERIFY(waitForAnswers(1));
    m_greeting = QStringLiteral("proper"); // the engine has come back
    QVERIFY(waitForAnswers(3));
    QCOMPARE(order(), QList<int>({0, 1, 2}));
    QCOMPARE(m_done[0].reason, Reason::ProgramMissing);
    QCOMPARE(m_done[0].text, QStringLiteral("the engine is not installed"));
    QCOMPARE(m_done[2].reason, Reason::None);
}

void TestWorkerPool::aMissingProgramFailsEveryTaskWithItsName()
{
    QVERIFY(QFile::remove(m_folder->path("worker")));
    make({.maxWorkers = 2});
    for (int i = 0; i < 4; ++i)
        submit("echo");
    QVERIFY(waitForAnswers(4));
    for (const auto &done : m_done) {
        QCOMPARE(done.reason, Reason::ProgramMissing);
        QVERIFY(done.text.contains(QStringLiteral("the worker")));
    }
    QCOMPARE(m_pool->workerCount(), 0);
}

void TestWorkerPool::warmStartsOneWorker()
{
    make({.maxWorkers = 3});
    m_pool->warm();
    QCOMPARE(m_pool->workerCount(), 1);
    submit("echo");
    QVERIFY(waitForAnswers(1));
    QCOMPARE(m_done[0].reason, Reason::None);
}

void TestWorkerPool::warmKeepsTheWorkerThatIsThere()
{
    make({.maxWorkers = 3});
    submit("echo");
    QVERIFY(waitForAnswers(1));
    m_pool->warm();
    m_pool->warm();
    QCOMPARE(m_pool->workerCount(), 1);
}

void TestWorkerPool::endsIdleWorkers()
{
    make({.maxWorkers = 2, .idleMs = 100});
    submit("wait-for");
    submit("echo");
    QVERIFY(waitForAnswers(1));
    let("go");
    QVERIFY(waitForAnswers(2));
    QVERIFY(QTest::qWaitFor([this] { return m_pool->workerCount() == 0; }, Patience));
    for (const auto process : processes())
        QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(process), Patience);
    submit("echo");
    QVERIFY(waitForAnswers(3));
    QCOMPARE(m_done[2].reason, Reason::None);
}

void TestWorkerPool::aWorkerThatIsAtWorkIsNotIdle()
{
    make({.maxWorkers = 1, .idleMs = 50});
    submit("wait-for");
    QTest::qWait(500); // ten times as long as an idle one lives
    QCOMPARE(m_pool->workerCount(), 1);
    let("go");
    QVERIFY(waitForAnswers(1));
    QCOMPARE(m_done[0].reason, Reason::None);
}

void TestWorkerPool::shutDownCancelsEverything()
{
    make({.maxWorkers = 1});
    submit("echo");
    QVERIFY(waitForAnswers(1));
    m_done.clear();
    for (int i = 0; i < 3; ++i)
        submit("hang");
    QTest::qWait(50); // one of them is at work or waits, as it likes
    m_pool->shutDown();
    QCOMPARE(m_done.size(), 3);
    for (const auto &done : m_done)
        QCOMPARE(done.reason, Reason::Cancelled);
    QCOMPARE(m_pool->workerCount(), 0);
}

void TestWorkerPool::shutDownDoesNotWaitForAWorkerThatIsStarting()
{
    m_greeting = QStringLiteral("none");
    make({.maxWorkers = 1});
    submit("echo");
    QVERIFY(QTest::qWaitFor([this] { return m_pool->workerCount() == 1; }, Patience));
    QElapsedTimer clock;
    clock.start();
    m_pool->shutDown();
    QVERIFY(clock.elapsed() < 1500);
    QCOMPARE(m_done.size(), 1);
    QCOMPARE(m_done[0].reason, Reason::Cancelled);
}

void TestWorkerPool::shutDownEndsTheProcesses()
{
    make({.maxWorkers = 1});
    submit("echo");
    QVERIFY(waitForAnswers(1));
    m_waitFor = m_folder->path("child");
    submit("hang-with-child");
    QTRY_VERIFY_WITH_TIMEOUT(contentOf(m_waitFor).endsWith('\n'), Patience);
    const auto child = contentOf(m_waitFor).trimmed().toLongLong();
    QVERIFY(SystemActions::isRunning(child));
    m_pool->shutDown();
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(child), Patience);
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(m_done[0].process), Patience);
}

void TestWorkerPool::answersNeverComeBeforeSubmitReturns()
{
    QVERIFY(QFile::remove(m_folder->path("worker")));
    make({.maxWorkers = 1});
    submit("echo");
    QCOMPARE(m_done.size(), 0);
    QVERIFY(waitForAnswers(1));
}

QTEST_GUILESS_MAIN(TestWorkerPool)
#include "tst_workerpool.moc"
