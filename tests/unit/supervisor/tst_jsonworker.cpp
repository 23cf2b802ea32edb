#include "component/supervisor/JsonWorker.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"
#include "unit/supervisor/WorkerWatch.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds
constexpr Limits Short{.stallMs = 300, .totalMs = 60'000};

QJsonObject request(const char *op)
{
    return {{QStringLiteral("op"), QLatin1String(op)}};
}

} // namespace

class TestJsonWorker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isReadyOnceItHasGreeted();
    void answersARequest();
    void oneProcessServesManyRequests();
    void isFreeAfterItsAnswer();
    void leadsAGroupOfItsOwn();
    void progressIsHandedOn();
    void aFailureHasItsReason();
    void aReasonThatNobodyKnowsMeansThatTheEngineFailed();
    void garbageAmongItsAnswersIsIgnored();
    void garbageBeforeItsGreetingIsIgnored();
    void answersForOtherRequestsAreIgnored();
    void dyingInTheMiddleAnswersTheTask();
    void dyingWhileIdleEndsIt();
    void hangingIsKilledAfterAWhile();
    void progressKeepsASlowWorkerAlive();
    void workThatTakesTooLongAltogetherIsKilled();
    void theWholeGroupDiesWithAWorkerThatHangs();
    void theWholeGroupDiesWithAWorkerThatExits();
    void theWholeGroupDiesWithItsObject();
    void endingItCancelsItsTask();
    void endingItTwiceAnswersOnce();
    void saysWhyItIsUnavailable();
    void anExitBeforeTheGreetingIsAFailure();
    void aWorkerThatNeverGreetsIsKilled();
    void aMissingProgramIsNamed();
    void aProgramThatMayNotRunIsNamed();
    void aWorkerThatSaysItIsItsLastAnswerEnds();
    void theWorksFolderIsInTheWorkersPlaceMeanwhile();
    void theWorksFolderComesBackFromAWorkerThatDies();
    void theWorkersPlaceGoesWithIt();
    void aWorkerWithoutAPlaceIsNotStarted();

private:
    void make(const char *greeting = "proper");
    qint64 startChild(const char *op, const Limits &limits);

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<JsonWorker> m_worker;
    std::unique_ptr<WorkerWatch> m_watch;
};

void TestJsonWorker::init()
{
    m_folder = std::make_unique<TestFolder>();
    QVERIFY(QFile::link(QStringLiteral(QUORLIN_STAND_IN_WORKER), m_folder->path("worker")));
    make();
}

void TestJsonWorker::cleanup()
{
    m_worker.reset();
    m_watch.reset();
    m_folder.reset();
}

void TestJsonWorker::make(const char *greeting)
{
    m_worker = std::make_unique<JsonWorker>(
        m_folder->path("worker"),
        QStringList{QStringLiteral("--greeting"), QLatin1String(greeting)},
        QStringLiteral("the worker"));
    m_worker->setPlace(m_folder->makeFolder("place"));
    m_watch = std::make_unique<WorkerWatch>(*m_worker);
}

void TestJsonWorker::isReadyOnceItHasGreeted()
{
    QVERIFY(!m_worker->isFree());
    QVERIFY(m_watch->start());
    QCOMPARE(m_watch->readies, 1);
    QVERIFY(m_worker->wasReady());
}

void TestJsonWorker::answersARequest()
{
    QVERIFY(m_watch->start());
    auto echo = request("echo");
    echo.insert(QStringLiteral("file"), QStringLiteral("/d/Übung \"1\"\n.docx"));
    const auto answer = m_watch->run(echo);
    QCOMPARE(answer.reason, Reason::None);
    QCOMPARE(answer.values.value(QLatin1String("file")), echo.value(QLatin1String("file")));
    QVERIFY(!answer.workerLost);
}

void TestJsonWorker::oneProcessServesManyRequests()
{
    QVERIFY(m_watch->start());
    const auto first = m_watch->run(request("pid")).values.value(QLatin1String("pid"));
    QVERIFY(first.toInt() > 1);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(m_watch->run(request("pid")).values.value(QLatin1String("pid")), first);
    QCOMPARE(m_worker->tasksDone(), 21);
}

void TestJsonWorker::isFreeAfterItsAnswer()
{
    QVERIFY(m_watch->start());
    QSignalSpy idle(m_worker.get(), &Worker::idle);
    m_watch->begin(request("echo"));
    QVERIFY(m_worker->isBusy());
    QVERIFY(m_watch->waitForAnswer());
    QVERIFY(m_worker->isFree());
    QCOMPARE(idle.count(), 1);
}

void TestJsonWorker::leadsAGroupOfItsOwn()
{
    QVERIFY(m_watch->start());
    const auto answer = m_watch->run(request("pid"));
    const auto process = answer.values.value(QLatin1String("pid")).toInteger();
    QCOMPARE(SystemActions::groupOf(process), process);
}

void TestJsonWorker::progressIsHandedOn()
{
    QVERIFY(m_watch->start());
    auto work = request("echo");
    work.insert(QStringLiteral("percents"), QJsonArray{10, 50, 90});
    QCOMPARE(m_watch->run(work).reason, Reason::None);
    QCOMPARE(m_watch->percents, QList<int>({10, 50, 90}));
}

void TestJsonWorker::aFailureHasItsReason()
{
    QVERIFY(m_watch->start());
    auto work = request("fail");
    work.insert(QStringLiteral("reason"), QStringLiteral("protected"));
    const auto answer = m_watch->run(work);
    QCOMPARE(answer.reason, Reason::Protected);
    QCOMPARE(answer.text, reasonText(Reason::Protected));
    QVERIFY(!answer.workerLost);
    QCOMPARE(m_watch->run(request("echo")).reason, Reason::None);
}

void TestJsonWorker::aReasonThatNobodyKnowsMeansThatTheEngineFailed()
{
    QVERIFY(m_watch->start());
    auto work = request("fail");
    work.insert(QStringLiteral("reason"), QStringLiteral("mood"));
    QCOMPARE(m_watch->run(work).reason, Reason::EngineFailed);
}

void TestJsonWorker::garbageAmongItsAnswersIsIgnored()
{
    QVERIFY(m_watch->start());
    QCOMPARE(m_watch->run(request("garbage")).reason, Reason::None);
    QCOMPARE(m_watch->run(request("echo")).reason, Reason::None);
    QCOMPARE(m_watch->answers.size(), 2);
}

void TestJsonWorker::garbageBeforeItsGreetingIsIgnored()
{
    make("garbage");
    QVERIFY(m_watch->start());
    QCOMPARE(m_watch->run(request("echo")).reason, Reason::None);
}

void TestJsonWorker::answersForOtherRequestsAreIgnored()
{
    QVERIFY(m_watch->start());
    const auto answer = m_watch->run(request("other-id"));
    QCOMPARE(answer.reason, Reason::None);
    QCOMPARE(answer.values.value(QLatin1String("op")).toString(), QStringLiteral("other-id"));
    QCOMPARE(m_watch->run(request("echo")).reason, Reason::None);
    QCOMPARE(m_watch->answers.size(), 2);
}

void TestJsonWorker::dyingInTheMiddleAnswersTheTask()
{
    QVERIFY(m_watch->start());
    const auto answer = m_watch->run(request("die"));
    QCOMPARE(answer.reason, Reason::EngineFailed);
    QVERIFY(answer.workerLost);
    QVERIFY(m_watch->waitForEnd());
    QVERIFY(!m_worker->isFree());
    QCOMPARE(m_watch->answers.size(), 1);
}

void TestJsonWorker::dyingWhileIdleEndsIt()
{
    QVERIFY(m_watch->start());
    const auto answer = m_watch->run(request("pid"));
    SystemActions::kill(answer.values.value(QLatin1String("pid")).toInteger());
    QVERIFY(m_watch->waitForEnd());
    QVERIFY(!m_worker->isFree());
    QCOMPARE(m_watch->answers.size(), 1);
}

void TestJsonWorker::hangingIsKilledAfterAWhile()
{
    QVERIFY(m_watch->start());
    const auto process =
        m_watch->run(request("pid")).values.value(QLatin1String("pid")).toInteger();
    QElapsedTimer clock;
    clock.start();
    const auto answer = m_watch->run(request("hang"), {}, Short);
    QVERIFY(clock.elapsed() >= Short.stallMs);
    QCOMPARE(answer.reason, Reason::TookTooLong);
    QVERIFY(answer.workerLost);
    QVERIFY(m_watch->waitForEnd());
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(process), Patience);
}

void TestJsonWorker::progressKeepsASlowWorkerAlive()
{
    const auto sign = m_folder->path("sign");
    QVERIFY(m_watch->start());
    auto work = request("wait-for");
    work.insert(QStringLiteral("file"), sign);
    m_watch->begin(work, m_folder->makeFolder("task"), {.stallMs = 1000, .totalMs = 60'000});
    QByteArray growing;
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < 2000; QTest::qWait(20))
        m_folder->write("place/task/output", growing += 'x');
    m_folder->write("sign", "");
    QVERIFY(m_watch->waitForAnswer());
    QCOMPARE(m_watch->answers[0].reason, Reason::None);
}

void TestJsonWorker::workThatTakesTooLongAltogetherIsKilled()
{
    QVERIFY(m_watch->start());
    const auto answer = m_watch->run(request("hang"), {}, {.stallMs = 60'000, .totalMs = 200});
    QCOMPARE(answer.reason, Reason::TookTooLong);
    QVERIFY(answer.workerLost);
}

/// Lets the worker start a process of its own. @return that process.
qint64 TestJsonWorker::startChild(const char *op, const Limits &limits)
{
    const auto note = m_folder->path("child");
    auto work = request(op);
    work.insert(QStringLiteral("file"), note);
    m_watch->begin(work, {}, limits);
    (void)QTest::qWaitFor([&] { return contentOf(note).endsWith('\n'); }, Patience);
    return contentOf(note).trimmed().toLongLong();
}

void TestJsonWorker::theWholeGroupDiesWithAWorkerThatHangs()
{
    QVERIFY(m_watch->start());
    const auto child = startChild("hang-with-child", {.stallMs = 2000, .totalMs = 60'000});
    QVERIFY(SystemActions::isRunning(child));
    QVERIFY(m_watch->waitForAnswer());
    QCOMPARE(m_watch->answers[0].reason, Reason::TookTooLong);
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(child), Patience);
}

void TestJsonWorker::theWholeGroupDiesWithAWorkerThatExits()
{
    QVERIFY(m_watch->start());
    const auto child = startChild("exit-with-child", {});
    QVERIFY(child > 1);
    QVERIFY(m_watch->waitForAnswer());
    QCOMPARE(m_watch->answers[0].reason, Reason::EngineFailed);
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(child), Patience);
}

void TestJsonWorker::theWholeGroupDiesWithItsObject()
{
    QVERIFY(m_watch->start());
    const auto child = startChild("hang-with-child", {});
    QVERIFY(SystemActions::isRunning(child));
    m_worker.reset();
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(child), Patience);
}

void TestJsonWorker::endingItCancelsItsTask()
{
    QVERIFY(m_watch->start());
    const auto child = startChild("hang-with-child", {});
    m_worker->end();
    QCOMPARE(m_watch->answers.size(), 1);
    QCOMPARE(m_watch->answers[0].reason, Reason::Cancelled);
    QCOMPARE(m_watch->ends.size(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(child), Patience);
}

void TestJsonWorker::endingItTwiceAnswersOnce()
{
    QVERIFY(m_watch->start());
    m_watch->begin(request("hang"));
    m_worker->end();
    m_worker->end();
    QTest::qWait(200); // the process's own end is noticed in this time
    QCOMPARE(m_watch->answers.size(), 1);
    QCOMPARE(m_watch->ends.size(), 1);
}

void TestJsonWorker::saysWhyItIsUnavailable()
{
    make("unavailable");
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends.size(), 1);
    QCOMPARE(m_watch->ends[0].reason, Reason::ProgramMissing);
    QCOMPARE(m_watch->ends[0].text, QStringLiteral("the engine is not installed"));
    QVERIFY(!m_worker->wasReady());
}

void TestJsonWorker::anExitBeforeTheGreetingIsAFailure()
{
    make("die");
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends[0].reason, Reason::EngineFailed);
    QVERIFY(m_watch->ends[0].text.contains(QStringLiteral("the worker")));
}

void TestJsonWorker::aWorkerThatNeverGreetsIsKilled()
{
    make("none");
    m_worker->setStartLimit(300);
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends.size(), 1);
    QCOMPARE(m_watch->ends[0].reason, Reason::TookTooLong);
    QVERIFY(!m_worker->wasReady());
}

void TestJsonWorker::aMissingProgramIsNamed()
{
    QVERIFY(QFile::remove(m_folder->path("worker")));
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends.size(), 1);
    QCOMPARE(m_watch->ends[0].reason, Reason::ProgramMissing);
    QVERIFY(m_watch->ends[0].text.contains(QStringLiteral("the worker")));
}

void TestJsonWorker::aProgramThatMayNotRunIsNamed()
{
    QVERIFY(QFile::remove(m_folder->path("worker")));
    m_folder->write("worker", "no program");
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends[0].reason, Reason::ProgramMissing);
}

void TestJsonWorker::aWorkerThatSaysItIsItsLastAnswerEnds()
{
    QVERIFY(m_watch->start());
    auto work = request("fail");
    work.insert(QStringLiteral("reason"), QStringLiteral("engine-failed"));
    work.insert(QStringLiteral("last"), true);
    const auto answer = m_watch->run(work);
    QCOMPARE(answer.reason, Reason::EngineFailed);
    QVERIFY(answer.workerLost);
    QVERIFY(!m_worker->isFree());
    QVERIFY(m_watch->waitForEnd());
}

void TestJsonWorker::theWorksFolderIsInTheWorkersPlaceMeanwhile()
{
    m_folder->write("task/document", "content");
    QVERIFY(m_watch->start());
    auto work = request("wait-for");
    work.insert(QStringLiteral("file"), m_folder->path("sign"));
    m_watch->begin(work, m_folder->path("task"));
    QCOMPARE(contentOf(m_folder->path("place/task/document")), QByteArray("content"));
    QVERIFY(!QFile::exists(m_folder->path("task")));
    m_folder->write("sign", "");
    QVERIFY(m_watch->waitForAnswer());
    QCOMPARE(m_watch->answers[0].folder, m_folder->path("place/task"));
    QCOMPARE(contentOf(m_folder->path("task/document")), QByteArray("content"));
    QVERIFY(!QFile::exists(m_folder->path("place/task")));
}

void TestJsonWorker::theWorksFolderComesBackFromAWorkerThatDies()
{
    m_folder->write("task/document", "content");
    QVERIFY(m_watch->start());
    QCOMPARE(m_watch->run(request("die"), m_folder->path("task")).reason, Reason::EngineFailed);
    QCOMPARE(contentOf(m_folder->path("task/document")), QByteArray("content"));
}

void TestJsonWorker::theWorkersPlaceGoesWithIt()
{
    QVERIFY(m_watch->start());
    m_folder->write("place/profile/settings", "what an engine keeps");
    m_worker.reset();
    QVERIFY(!QFile::exists(m_folder->path("place")));
}

void TestJsonWorker::aWorkerWithoutAPlaceIsNotStarted()
{
    m_worker->setPlace(QString());
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends.size(), 1);
    QCOMPARE(m_watch->ends[0].reason, Reason::NoRoom);
}

QTEST_GUILESS_MAIN(TestJsonWorker)
#include "tst_jsonworker.moc"
