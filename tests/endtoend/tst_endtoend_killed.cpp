#include "endtoend/ConvertScene.h"
#include "endtoend/TestDocuments.h"
#include "support/SystemActions.h"

#include <QFileInfo>
#include <QTest>

using namespace Quorlin;

using namespace std::chrono_literals;

namespace {

/// A PDF's result must not have the name of the PDF itself.
const QString FirstPrinted = QStringLiteral("first (2).ps~");

} // namespace

/// Parts that die in the middle of a job.
class tst_endtoend_killed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ConvertScene>(); }
    void cleanup();
    void aWorkerThatDiesCostsNoDocument_data();
    void aWorkerThatDiesCostsNoDocument();
    void aDistillerThatDiesCostsNoDocument();
    void aComponentThatDiesIsReported();
    void aToolThatDiesLeavesNothing();
    void whatAllThatDieLeaveIsRemovedByTheNextRun();
    void aSignalEndsTheToolCleanly_data();
    void aSignalEndsTheToolCleanly();

private:
    void startLongJob();
    void killAll(const QStringList &spared);
    void nextJobWorks();

    std::unique_ptr<ConvertScene> m_scene;
};

void tst_endtoend_killed::cleanup()
{
    QCOMPARE(m_scene->leftovers(), QString());
    m_scene.reset();
}

void tst_endtoend_killed::nextJobWorks()
{
    m_scene->write(QStringLiteral("next.fodt"), TestDocuments::letter("next"));
    const auto outcome = m_scene->convert({QStringLiteral("next.fodt")});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
}

/// A job with something to do for the office engine and the printer for seconds.
void tst_endtoend_killed::startLongJob()
{
    m_scene->write(QStringLiteral("first.pdf"), TestDocuments::pdf("first"));
    m_scene->write(QStringLiteral("long.html"), TestDocuments::longPage(1500));
    m_scene->write(QStringLiteral("large.pdf"), TestDocuments::pdf("large", 40'000, 20));
    m_scene->write(QStringLiteral("last.fodt"), TestDocuments::letter("last"));
    m_scene->start({QStringLiteral("-o"), m_scene->path(QStringLiteral("out")),
                    QStringLiteral("first.pdf"), QStringLiteral("long.html"),
                    QStringLiteral("large.pdf"), QStringLiteral("last.fodt")});
    // Its first result: everything is in full swing.
    const auto hasResult = [this] { return QFileInfo::exists(m_scene->path(FirstPrinted)); };
    QVERIFY(m_scene->waitWhileRunning(hasResult));
}

void tst_endtoend_killed::aWorkerThatDiesCostsNoDocument_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("the office engine") << "soffice.bin";
    QTest::newRow("the office worker") << "quorlin-pdf-office";
    QTest::newRow("the printing worker") << "quorlin-pdf-print";
    QTest::newRow("what it prints with") << "pdftops";
}

void tst_endtoend_killed::aWorkerThatDiesCostsNoDocument()
{
    QFETCH(QString, program);
    startLongJob();
    if (QTest::currentTestFailed())
        return;
    const auto process = m_scene->processOf(program);
    QVERIFY(process != 0);
    SystemActions::kill(process);
    const auto outcome = m_scene->finish();
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QCOMPARE(outcome.results(), QStringList(4, QStringLiteral("converted")));
    nextJobWorks();
}

void tst_endtoend_killed::aDistillerThatDiesCostsNoDocument()
{
    m_scene->write(QStringLiteral("slow.ps"), TestDocuments::slowPostScript(60'000'000));
    m_scene->write(QStringLiteral("quick.ps"), TestDocuments::postScript("quick"));
    m_scene->write(QStringLiteral("page.fodt"), TestDocuments::letter("page"));
    m_scene->start(
        {QStringLiteral("quick.ps"), QStringLiteral("slow.ps"), QStringLiteral("page.fodt")});
    const auto process = m_scene->processOf(QStringLiteral("gs"));
    QVERIFY(process != 0);
    SystemActions::kill(process);
    const auto outcome = m_scene->finish();
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    nextJobWorks();
}

void tst_endtoend_killed::aComponentThatDiesIsReported()
{
    startLongJob();
    if (QTest::currentTestFailed())
        return;
    SystemActions::kill(m_scene->processOf(QStringLiteral("quorlin-pdf")));
    const auto outcome = m_scene->finish();
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.results(), QStringList(4, QStringLiteral("engine-failed")));
    QVERIFY(outcome.errors.contains(QStringLiteral("the PDF component died")));
    QVERIFY(m_scene->allProcessesEnd());
    nextJobWorks();
}

void tst_endtoend_killed::aToolThatDiesLeavesNothing()
{
    startLongJob();
    if (QTest::currentTestFailed())
        return;
    SystemActions::kill(m_scene->tool().processId());
    QCOMPARE(m_scene->finish().exitCode, -2);
    QVERIFY(m_scene->allProcessesEnd());
    QCOMPARE(m_scene->leftovers(), QString());
    nextJobWorks();
}

void tst_endtoend_killed::killAll(const QStringList &spared)
{
    for (const auto &process : m_scene->processes())
        if (!spared.contains(process.name))
            SystemActions::kill(process.id);
}

void tst_endtoend_killed::whatAllThatDieLeaveIsRemovedByTheNextRun()
{
    startLongJob();
    if (QTest::currentTestFailed())
        return;
    QVERIFY(m_scene->processOf(QStringLiteral("soffice.bin")) != 0);
    killAll({QStringLiteral("soffice.bin")});
    QCOMPARE(m_scene->finish().exitCode, -2);
    QVERIFY(m_scene->allProcessesEnd());
    QVERIFY(QFileInfo::exists(m_scene->path(FirstPrinted)));
    QVERIFY(!m_scene->temporaryFiles().isEmpty());
    nextJobWorks();
}

void tst_endtoend_killed::aSignalEndsTheToolCleanly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("terminated") << "TERM" << 143;
    QTest::newRow("interrupted") << "INT" << 130;
}

void tst_endtoend_killed::aSignalEndsTheToolCleanly()
{
    QFETCH(QString, name);
    QFETCH(int, exitCode);
    startLongJob();
    if (QTest::currentTestFailed())
        return;
    const auto process = m_scene->tool().processId();
    if (name == QLatin1String("TERM"))
        SystemActions::askToEnd(process);
    else
        SystemActions::interrupt(process);
    const auto outcome = m_scene->finish(10s);
    QCOMPARE(outcome.exitCode, exitCode);
    QCOMPARE(outcome.results(), QStringList(4, QStringLiteral("cancelled")));
}

QTEST_GUILESS_MAIN(tst_endtoend_killed)
#include "tst_endtoend_killed.moc"
