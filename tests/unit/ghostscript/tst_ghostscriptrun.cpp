#include "component/supervisor/GhostscriptRun.h"

#include "support/SystemActions.h"
#include "unit/ghostscript/GhostscriptScene.h"

#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds
constexpr Limits Short{.stallMs = 500, .totalMs = 60'000};

} // namespace

/// With the real Ghostscript, one process for each file.
class TestGhostscriptRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void distilsAFile();
    void needsNoProcessBeforeItsTask();
    void theJobOptionsHold();
    void endsAfterItsFile();
    void aFaultyProgramFailsWithTheErrorsName();
    void aProgramWithoutPagesIsTold();
    void aProgramThatQuitsByItselfIsDone();
    void aProgramThatPrintsMuchIsDone();
    void filesOutsideTheFolderAreOutOfReach();
    void optionsInTheEnvironmentDoNotLiftTheLimits();
    void faultyJobOptionsAreTold();
    void jobOptionsThatPrintSomethingAreRead();
    void missingJobOptionsAreTold();
    void aMissingProgramIsNamed();
    void aKilledProcessIsAFailedEngine();
    void aProgramWithoutEndIsKilled();
    void transparencyIsOnlyForPrintedFiles();
    void errorsMeanReasons();

private:
    std::unique_ptr<GhostscriptScene> m_scene;
    std::unique_ptr<GhostscriptRun> m_worker;
    std::unique_ptr<WorkerWatch> m_watch;
};

void TestGhostscriptRun::init()
{
    m_scene = std::make_unique<GhostscriptScene>();
    m_worker = std::make_unique<GhostscriptRun>();
    m_watch = std::make_unique<WorkerWatch>(*m_worker);
}

void TestGhostscriptRun::cleanup()
{
    qunsetenv("GS_OPTIONS");
    m_worker.reset();
    m_watch.reset();
    m_scene.reset();
}

void TestGhostscriptRun::distilsAFile()
{
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, pagesOf(3));
    QCOMPARE(answer.reason, Reason::None);
    QCOMPARE(answer.values.value(QLatin1String("pages")).toInt(), 3);
    QCOMPARE(m_scene->pages(), 3);
}

void TestGhostscriptRun::needsNoProcessBeforeItsTask()
{
    m_scene->hideProgram();
    QVERIFY(m_watch->start());
}

void TestGhostscriptRun::theJobOptionsHold()
{
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
    QVERIFY(m_scene->pdf().startsWith("%PDF-1.4"));
}

void TestGhostscriptRun::endsAfterItsFile()
{
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
    QVERIFY(m_watch->waitForEnd());
    QCOMPARE(m_watch->answers.size(), 1);
    QVERIFY(!m_worker->isFree());
}

void TestGhostscriptRun::aFaultyProgramFailsWithTheErrorsName()
{
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, "%!\nshowpage nosuchoperator\n");
    QCOMPARE(answer.reason, Reason::Damaged);
    QVERIFY2(answer.text.contains(QStringLiteral("undefined")), qUtf8Printable(answer.text));
}

void TestGhostscriptRun::aProgramWithoutPagesIsTold()
{
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, "%!\n1 1 add pop\n").reason, Reason::NothingPrinted);
}

void TestGhostscriptRun::aProgramThatQuitsByItselfIsDone()
{
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(2) + "quit\n").reason, Reason::None);
    QCOMPARE(m_scene->pages(), 2);
}

void TestGhostscriptRun::aProgramThatPrintsMuchIsDone()
{
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(
        *m_watch, "%!\n200000 { (without a line end ) print } repeat\n" + pagesOf(1));
    QCOMPARE(answer.reason, Reason::None);
    QCOMPARE(m_scene->pages(), 1);
}

void TestGhostscriptRun::filesOutsideTheFolderAreOutOfReach()
{
    const auto users = m_scene->outside.write("users", "the user's");
    QVERIFY(m_watch->start());
    const auto answer =
        m_scene->distil(*m_watch, "%!\n(" + QFile::encodeName(users) + ") (w) file showpage\n");
    QCOMPARE(answer.reason, Reason::Damaged);
    QVERIFY2(answer.text.contains(QStringLiteral("invalidfileaccess")),
             qUtf8Printable(answer.text));
    QCOMPARE(contentOf(users), QByteArray("the user's"));
}

void TestGhostscriptRun::optionsInTheEnvironmentDoNotLiftTheLimits()
{
    qputenv("GS_OPTIONS", "-dNOSAFER");
    filesOutsideTheFolderAreOutOfReach();
}

void TestGhostscriptRun::faultyJobOptionsAreTold()
{
    m_scene->folder.write("o.joboptions", "<< /A 1 >> setdistillerthings\n");
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, pagesOf(1));
    QCOMPARE(answer.reason, Reason::BadOptions);
    QVERIFY2(answer.text.contains(QStringLiteral("undefined")), qUtf8Printable(answer.text));
}

void TestGhostscriptRun::jobOptionsThatPrintSomethingAreRead()
{
    m_scene->folder.write("o.joboptions", "(no line end) print\n");
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, "%!\nnosuchoperator\n").reason, Reason::Damaged);
}

void TestGhostscriptRun::missingJobOptionsAreTold()
{
    QVERIFY(QFile::remove(m_scene->options));
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::BadOptions);
}

void TestGhostscriptRun::aMissingProgramIsNamed()
{
    m_scene->hideProgram();
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, pagesOf(1));
    QCOMPARE(answer.reason, Reason::ProgramMissing);
    QVERIFY(answer.text.contains(QStringLiteral("Ghostscript")));
    QVERIFY(m_watch->waitForEnd());
    QCOMPARE(m_watch->answers.size(), 1);
}

void TestGhostscriptRun::aKilledProcessIsAFailedEngine()
{
    m_scene->watchProcesses();
    QVERIFY(m_watch->start());
    m_scene->begin(*m_watch, "%!\n{ } loop\n");
    SystemActions::kill(m_scene->processId());
    QVERIFY(m_watch->waitForAnswer());
    QCOMPARE(m_watch->answers[0].reason, Reason::EngineFailed);
    QVERIFY(m_watch->answers[0].workerLost);
}

void TestGhostscriptRun::aProgramWithoutEndIsKilled()
{
    m_scene->watchProcesses();
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, "%!\n{ } loop\n", {}, Short);
    QCOMPARE(answer.reason, Reason::TookTooLong);
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(m_scene->processId()), Patience);
}

void TestGhostscriptRun::transparencyIsOnlyForPrintedFiles()
{
    const QByteArray program("%!\n0.5 .setfillconstantalpha 72 72 100 100 rectfill showpage\n");
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, program).reason, Reason::Damaged);
    GhostscriptRun printed;
    WorkerWatch watch(printed);
    QVERIFY(watch.start());
    QCOMPARE(m_scene->distil(watch, program, {{QStringLiteral("printed"), true}}).reason,
             Reason::None);
}

void TestGhostscriptRun::errorsMeanReasons()
{
    QCOMPARE(GhostscriptRun::failureOf("VMerror").reason, Reason::OutOfMemory);
    QCOMPARE(GhostscriptRun::failureOf("ioerror").reason, Reason::NoRoom);
    QCOMPARE(GhostscriptRun::failureOf("invalidfileaccess").reason, Reason::Damaged);
    QCOMPARE(GhostscriptRun::failureOf("undefined").reason, Reason::Damaged);
}

QTEST_GUILESS_MAIN(TestGhostscriptRun)
#include "tst_ghostscriptrun.moc"
