#include "component/supervisor/GhostscriptWorker.h"

#include "support/SystemActions.h"
#include "unit/ghostscript/GhostscriptScene.h"

#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds
constexpr Limits Short{.stallMs = 500, .totalMs = 60'000};

} // namespace

/// With the real Ghostscript.
class TestGhostscriptWorker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void distilsAFile();
    void oneProcessDistilsManyFiles();
    void everyFileHasItsOwnPages();
    void theJobOptionsHoldForEveryFile_data();
    void theJobOptionsHoldForEveryFile();
    void progressComesByPage();
    void aFaultyProgramFailsWithTheErrorsName_data();
    void aFaultyProgramFailsWithTheErrorsName();
    void aFaultyProgramDoesNotHurtTheNextOne_data();
    void aFaultyProgramDoesNotHurtTheNextOne();
    void whatAProgramPrintsIsNoAnswer();
    void aProgramWithoutPagesIsTold();
    void filesOutsideTheFolderAreOutOfReach_data();
    void filesOutsideTheFolderAreOutOfReach();
    void anotherOutputIsNotWritten();
    void reachingForFilesIsTold();
    void aMissingInputFails();
    void anOutputThatCannotBeMadeFails();
    void faultyJobOptionsAreTold_data();
    void faultyJobOptionsAreTold();
    void missingJobOptionsAreTold();
    void aMissingProgramIsNamed();
    void aProgramThatQuitsIsAFailedEngine();
    void aKilledProcessIsAFailedEngine();
    void aProgramWithoutEndIsKilled();

private:
    std::unique_ptr<GhostscriptScene> m_scene;
    std::unique_ptr<GhostscriptWorker> m_worker;
    std::unique_ptr<WorkerWatch> m_watch;
};

void TestGhostscriptWorker::init()
{
    m_scene = std::make_unique<GhostscriptScene>();
    m_worker = std::make_unique<GhostscriptWorker>(m_scene->options);
    m_worker->setPlace(m_scene->folder.path());
    m_watch = std::make_unique<WorkerWatch>(*m_worker);
}

void TestGhostscriptWorker::cleanup()
{
    m_worker.reset();
    m_watch.reset();
    m_scene.reset();
}

void TestGhostscriptWorker::distilsAFile()
{
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, pagesOf(3));
    QCOMPARE(answer.reason, Reason::None);
    QCOMPARE(answer.values.value(QLatin1String("pages")).toInt(), 3);
    QCOMPARE(m_scene->pages(), 3);
}

void TestGhostscriptWorker::oneProcessDistilsManyFiles()
{
    m_scene->watchProcesses();
    QVERIFY(m_watch->start());
    const auto process = m_scene->processId();
    for (int i = 0; i < 20; ++i)
        QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
    QVERIFY(SystemActions::isRunning(process));
    QCOMPARE(m_scene->processId(), process);
    QCOMPARE(m_worker->tasksDone(), 20);
}

void TestGhostscriptWorker::everyFileHasItsOwnPages()
{
    QVERIFY(m_watch->start());
    for (const int count : {1, 5, 2}) {
        const auto answer = m_scene->distil(*m_watch, pagesOf(count));
        QCOMPARE(answer.values.value(QLatin1String("pages")).toInt(), count);
        QCOMPARE(m_scene->pages(), count);
    }
}

void TestGhostscriptWorker::theJobOptionsHoldForEveryFile_data()
{
    QTest::addColumn<QByteArray>("level");
    for (const char *level : {"1.3", "1.4", "1.5", "1.6"})
        QTest::newRow(level) << QByteArray(level);
}

void TestGhostscriptWorker::theJobOptionsHoldForEveryFile()
{
    QFETCH(const QByteArray, level);
    m_scene->folder.write("o.joboptions",
                          "<< /CompatibilityLevel " + level + " >> setdistillerparams\n");
    QVERIFY(m_watch->start());
    for (const QByteArray size : {"100 100", "595 842", "842 595", "100 100"}) {
        const auto program = "%!\n<< /PageSize [" + size + "] >> setpagedevice showpage\n";
        QCOMPARE(m_scene->distil(*m_watch, program).reason, Reason::None);
        QVERIFY(m_scene->pdf().startsWith("%PDF-" + level));
        QVERIFY(m_scene->pdf().contains("/MediaBox [0 0 " + size + "]"));
    }
}

void TestGhostscriptWorker::progressComesByPage()
{
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(4), {{QStringLiteral("pages"), 4}}).reason,
             Reason::None);
    QCOMPARE(m_watch->percents.mid(0, 3), QList<int>({25, 50, 75}));
}

void TestGhostscriptWorker::aFaultyProgramFailsWithTheErrorsName_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<Reason>("reason");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const char *program, Reason reason = Reason::Damaged) {
        QTest::newRow(name) << QByteArray(program) << reason << QString::fromLatin1(name);
    };
    row("undefined", "%!\nnosuchoperator showpage\n");
    row("typecheck", "%!\nshowpage (a) 1 add\n");
    row("stackunderflow", "%!\npop\n");
    row("syntaxerror", "%!\n{ showpage\n");
    row("undefinedresult", "%!\n1 0 div\n");
    row("rangecheck", "%!\n-1 array\n");
    row("dictstackoverflow", "%!\n{ 1 dict begin } loop\n");
    row("stackoverflow", "%!\n{ 1 } loop\n");
}

void TestGhostscriptWorker::aFaultyProgramFailsWithTheErrorsName()
{
    QFETCH(const QByteArray, program);
    QFETCH(const Reason, reason);
    QFETCH(const QString, error);
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, program);
    QCOMPARE(answer.reason, reason);
    QVERIFY2(answer.text.contains(error), qUtf8Printable(answer.text));
}

void TestGhostscriptWorker::aFaultyProgramDoesNotHurtTheNextOne_data()
{
    QTest::addColumn<QByteArray>("program");
    const auto row = [](const char *what, const char *program) {
        QTest::newRow(what) << QByteArray(program);
    };
    row("stops in the middle", "%!\nshowpage nosuchoperator showpage\n");
    row("leaves things on the stack", "%!\n1 2 3 [ << ( showpage) showpage\n");
    row("leaves dictionaries open", "%!\n10 { 5 dict begin } repeat showpage\n");
    row("leaves a save open", "%!\nsave showpage\n");
    row("overflows the dictionaries", "%!\n{ 1 dict begin } loop\n");
    row("renames showpage", "%!\nuserdict /showpage { } put showpage\n");
    row("renames everyday words", "%!\nuserdict begin /def { pop pop } def /end {} put showpage\n");
    row("sets another page size", "%!\n<< /PageSize [100 100] >> setpagedevice showpage\n");
    row("nests without end", "%!\n/a { a 1 } def a\n");
    row("stops itself", "%!\nshowpage stop\n");
    row("closes its own file", "%!\ncurrentfile closefile\n");
    row("is no PostScript", "\x7f"
                            "ELF\x02\x01\x01");
    row("is empty", "");
}

void TestGhostscriptWorker::aFaultyProgramDoesNotHurtTheNextOne()
{
    QFETCH(const QByteArray, program);
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
    const auto good = m_scene->pdf().size();
    (void)m_scene->distil(*m_watch, program);
    QVERIFY(m_worker->isFree());
    const auto answer = m_scene->distil(*m_watch, pagesOf(2));
    QCOMPARE(answer.reason, Reason::None);
    QCOMPARE(answer.values.value(QLatin1String("pages")).toInt(), 2);
    QCOMPARE(m_scene->pages(), 2);
    QVERIFY(!m_scene->pdf().contains("/MediaBox [0 0 100 100]"));
    QVERIFY(m_scene->pdf().size() > good);
}

void TestGhostscriptWorker::whatAProgramPrintsIsNoAnswer()
{
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(
        *m_watch,
        "%!\n(%quorlin 0 end 0\\n) print (%quorlin  error x\\n) print flush\n" + pagesOf(2));
    QCOMPARE(answer.reason, Reason::None);
    QCOMPARE(answer.values.value(QLatin1String("pages")).toInt(), 2);
}

void TestGhostscriptWorker::aProgramWithoutPagesIsTold()
{
    QVERIFY(m_watch->start());
    QCOMPARE(m_scene->distil(*m_watch, "%!\n1 1 add pop\n").reason, Reason::NothingPrinted);
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
}

void TestGhostscriptWorker::filesOutsideTheFolderAreOutOfReach_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::newRow("read") << QByteArray("(%1) (r) file pop showpage\n");
    QTest::newRow("write") << QByteArray("(%1) (w) file pop showpage\n");
    QTest::newRow("append") << QByteArray("(%1) (a) file pop showpage\n");
    QTest::newRow("delete") << QByteArray("(%1) deletefile showpage\n");
    QTest::newRow("rename") << QByteArray("(%1) (%1.new) renamefile showpage\n");
    QTest::newRow("run") << QByteArray("(%1) run showpage\n");
    QTest::newRow("run a command") << QByteArray("(%pipe%cat %1) (r) file pop showpage\n");
}

void TestGhostscriptWorker::filesOutsideTheFolderAreOutOfReach()
{
    QFETCH(QByteArray, program);
    const auto users = m_scene->outside.write("users", "the user's");
    QVERIFY(m_watch->start());
    const auto answer =
        m_scene->distil(*m_watch, "%!\n" + program.replace("%1", QFile::encodeName(users)));
    QVERIFY(answer.reason != Reason::None && answer.reason != Reason::Cancelled);
    QCOMPARE(contentOf(users), QByteArray("the user's"));
    QCOMPARE(m_scene->outside.names(), QStringList{QStringLiteral("users")});
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
}

void TestGhostscriptWorker::anotherOutputIsNotWritten()
{
    const auto users = m_scene->outside.write("users", "the user's");
    QVERIFY(m_watch->start());
    for (const auto &path : {users, m_scene->outside.path("new")})
        (void)m_scene->distil(*m_watch, "%!\n<< /OutputFile (" + QFile::encodeName(path) +
                                            ") >> setpagedevice showpage\n");
    QCOMPARE(contentOf(users), QByteArray("the user's"));
    QCOMPARE(m_scene->outside.names(), QStringList{QStringLiteral("users")});
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
}

void TestGhostscriptWorker::reachingForFilesIsTold()
{
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, "%!\n(/etc/passwd) (r) file showpage\n");
    QCOMPARE(answer.reason, Reason::Damaged);
    QVERIFY2(answer.text.contains(QStringLiteral("invalidfileaccess")),
             qUtf8Printable(answer.text));
}

void TestGhostscriptWorker::aMissingInputFails()
{
    QVERIFY(m_watch->start());
    const auto answer =
        m_watch->run({{QStringLiteral("input"), m_scene->folder.path("gone.ps")},
                      {QStringLiteral("output"), m_scene->folder.path("gone.pdf")}});
    QCOMPARE(answer.reason, Reason::Damaged);
    QVERIFY(answer.text.contains(QStringLiteral("undefinedfilename")));
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
}

void TestGhostscriptWorker::anOutputThatCannotBeMadeFails()
{
    QVERIFY(m_watch->start());
    const auto answer =
        m_watch->run({{QStringLiteral("input"), m_scene->folder.write("a.ps", pagesOf(1))},
                      {QStringLiteral("output"), m_scene->folder.path("no folder/a.pdf")}});
    QVERIFY(answer.reason != Reason::None);
    QCOMPARE(m_scene->distil(*m_watch, pagesOf(1)).reason, Reason::None);
}

void TestGhostscriptWorker::faultyJobOptionsAreTold_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::newRow("unknown word") << QByteArray("<< /A 1 >> setdistillerthings\n");
    QTest::newRow("not closed") << QByteArray("<< /CompatibilityLevel 1.4 setdistillerparams\n");
    QTest::newRow("cut") << QByteArray("<< /CompatibilityLevel 1.4 >> { setdistiller");
    QTest::newRow("wrong type") << QByteArray(
        "<< /CompatibilityLevel /High >> setdistillerparams\n");
    QTest::newRow("reaches files") << QByteArray("(/etc/passwd) (r) file pop\n");
    QTest::newRow("no text") << QByteArray("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1");
}

void TestGhostscriptWorker::faultyJobOptionsAreTold()
{
    QFETCH(const QByteArray, options);
    m_scene->folder.write("o.joboptions", options);
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends.size(), 1);
    QCOMPARE(m_watch->ends[0].reason, Reason::BadOptions);
    QVERIFY(!m_watch->ends[0].text.isEmpty());
}

void TestGhostscriptWorker::missingJobOptionsAreTold()
{
    QVERIFY(QFile::remove(m_scene->options));
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends[0].reason, Reason::BadOptions);
}

void TestGhostscriptWorker::aMissingProgramIsNamed()
{
    m_scene->hideProgram();
    QVERIFY(!m_watch->start());
    QCOMPARE(m_watch->ends.size(), 1);
    QCOMPARE(m_watch->ends[0].reason, Reason::ProgramMissing);
    QVERIFY(m_watch->ends[0].text.contains(QStringLiteral("Ghostscript")));
}

void TestGhostscriptWorker::aProgramThatQuitsIsAFailedEngine()
{
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, "%!\nshowpage quit\n");
    QCOMPARE(answer.reason, Reason::EngineFailed);
    QVERIFY(answer.workerLost);
    QVERIFY(m_watch->waitForEnd());
}

void TestGhostscriptWorker::aKilledProcessIsAFailedEngine()
{
    m_scene->watchProcesses();
    QVERIFY(m_watch->start());
    m_scene->begin(*m_watch, "%!\n{ } loop\n");
    SystemActions::kill(m_scene->processId());
    QVERIFY(m_watch->waitForAnswer());
    QCOMPARE(m_watch->answers[0].reason, Reason::EngineFailed);
    QVERIFY(m_watch->answers[0].workerLost);
    QVERIFY(m_watch->waitForEnd());
}

void TestGhostscriptWorker::aProgramWithoutEndIsKilled()
{
    m_scene->watchProcesses();
    QVERIFY(m_watch->start());
    const auto answer = m_scene->distil(*m_watch, "%!\n{ } loop\n", {}, Short);
    QCOMPARE(answer.reason, Reason::TookTooLong);
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(m_scene->processId()), Patience);
}

QTEST_GUILESS_MAIN(TestGhostscriptWorker)
#include "tst_ghostscriptworker.moc"
