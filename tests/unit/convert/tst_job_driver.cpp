#include "convert/JobDriver.h"

#include "unit/convert/JobScene.h"

#include <QFile>
#include <QTest>

using namespace Quorlin;

/// The driver with a component that converts nothing but behaves as asked.
class TestJobDriver : public JobScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { prepare(); }
    void cleanup() { tidyUp(); }
    void doesNothingWithoutDocuments();
    void doesNothingWhileTheWindowWorks();
    void deliversOneDocumentBesideIt();
    void goesThroughTheStepsInOrder();
    void endsTheJobOnceForEachDocument();
    void opensEachResultWhenAsked();
    void doesNotMergeOneDocument();
    void mergesIntoTheFileThatTheUserChooses();
    void copiesNothingWhenTheUserChoosesNoFile();
    void proposesTheFirstDocumentsName();
    void opensTheMergedFileWhenAsked();
    void tellsAFailedPrintingAndEnds();
    void namesADocumentThatWasNotPrinted();
    void stopsBeforeDistillingWhenAPrintedFileIsMissing();
    void tellsAFailedDistilling();
    void skipsADocumentWhoseDistilledFileIsMissing();
    void tellsAFailedMerge();
    void tellsThatAResultCannotBeCopied();
    void copiesOverAnInputWithoutAPoint();
    void clampsAndWeighsTheProgress();
    void handsOnThePrinterAndTheJobOptions();
    void nextJobWorksAfterAFailedOne();
    void nextJobWorksAfterTheComponentDied();
    void aJobBegunWhileResultsAreCopiedIsNotDisturbed();
    void leavesNoTemporaryFile();
    void leavesNoTemporaryFileAfterAFailedPrinting();
};

void TestJobDriver::doesNothingWithoutDocuments()
{
    start({});
    QVERIFY(m_window.events.isEmpty());
    QVERIFY(!m_lib->isRunning());
}

void TestJobDriver::doesNothingWhileTheWindowWorks()
{
    m_window.working = true;
    start({"a.txt"});
    QVERIFY(m_window.events.isEmpty());
    QVERIFY(!m_lib->isRunning());
    m_window.working = false;
    start({"dawdle.txt"});
    m_driver->LblConvert_Click();
    QCOMPARE(m_window.count("working"), 1);
}

void TestJobDriver::deliversOneDocumentBesideIt()
{
    run({"a.txt"});
    QVERIFY(QFile::exists(m_folder->path("a.pdf")));
    QVERIFY(contentOf(m_folder->path("a.pdf")).contains("a.txt"));
    QVERIFY(messages().isEmpty());
    QVERIFY(m_opened.isEmpty());
}

void TestJobDriver::goesThroughTheStepsInOrder()
{
    run({"a.txt"});
    QCOMPARE(m_window.events,
             QStringList({QStringLiteral("working"), QStringLiteral("value 0"),
                          QStringLiteral("InfoPrint"), QStringLiteral("InfoConvert"),
                          QStringLiteral("value 100"), QStringLiteral("idle"),
                          QStringLiteral("value 0")}));
}

void TestJobDriver::endsTheJobOnceForEachDocument()
{
    // On purpose: the window is idle when the first result is there.
    run({"a.txt", "b.txt", "c.txt"});
    QTRY_COMPARE(m_window.count("idle"), 3);
    QTRY_VERIFY(QFile::exists(m_folder->path("c.pdf")));
    QCOMPARE(m_window.count("value 100"), 3);
}

void TestJobDriver::opensEachResultWhenAsked()
{
    m_window.optShow = true;
    run({"a.txt", "b.txt"});
    QTRY_COMPARE(m_opened, QStringList({m_folder->path("a.pdf"), m_folder->path("b.pdf")}));
}

void TestJobDriver::doesNotMergeOneDocument()
{
    m_window.optLink = true;
    run({"a.txt"});
    QVERIFY(QFile::exists(m_folder->path("a.pdf")));
    QVERIFY(m_window.questions.isEmpty());
    QCOMPARE(m_window.count("InfoMerge"), 0);
}

void TestJobDriver::mergesIntoTheFileThatTheUserChooses()
{
    m_window.optLink = true;
    m_window.answer = m_folder->path("all.pdf");
    run({"a.txt", "b.txt"});
    const auto merged = contentOf(m_window.answer);
    QVERIFY(merged.indexOf("a.txt") >= 0);
    QVERIFY(merged.indexOf("b.txt") > merged.indexOf("a.txt"));
    QCOMPARE(m_window.count("InfoMerge"), 1);
    QCOMPARE(m_window.count("idle"), 1);
    QVERIFY(!QFile::exists(m_folder->path("a.pdf")));
    QVERIFY(m_merger->BookmarkPerDocument());
}

void TestJobDriver::copiesNothingWhenTheUserChoosesNoFile()
{
    m_window.optLink = true;
    run({"a.txt", "b.txt"});
    QCOMPARE(m_window.questions.size(), 1);
    QVERIFY(messages().isEmpty());
    QVERIFY(!QFile::exists(m_folder->path("a.pdf")));
    QCOMPARE(m_folder->names().size(), 4);
}

void TestJobDriver::proposesTheFirstDocumentsName()
{
    m_window.optLink = true;
    run({"a.b.txt", "c.txt"});
    QCOMPARE(m_window.questions, QStringList(QStringLiteral("DialogSaveTitle|Document PDF|*.pdf|") +
                                             m_folder->path("a.b.pdf")));
}

void TestJobDriver::opensTheMergedFileWhenAsked()
{
    m_window.optLink = true;
    m_window.optShow = true;
    m_window.answer = m_folder->path("all.pdf");
    run({"a.txt", "b.txt"});
    QCOMPARE(m_opened, QStringList(m_window.answer));
}

void TestJobDriver::tellsAFailedPrintingAndEnds()
{
    qputenv("QUORLIN_FAKE", "absent");
    run({"a.txt"});
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorPDFLibPrint")));
    QCOMPARE(m_window.count("idle"), 1);
    QCOMPARE(m_window.count("InfoConvert"), 0);
}

void TestJobDriver::namesADocumentThatWasNotPrinted()
{
    run({"fail.txt"});
    QVERIFY(!messages().isEmpty());
    // No space before the second part.
    QCOMPARE(messages().first(), QStringLiteral("ErrorPrintFilename1 ") +
                                     m_folder->path("fail.txt") +
                                     QStringLiteral("ErrorPrintFilename2"));
}

void TestJobDriver::stopsBeforeDistillingWhenAPrintedFileIsMissing()
{
    run({"a.txt", "missing.txt", "c.txt"});
    QCOMPARE(messages().last(), QStringLiteral("ErrorPDFLibPrint"));
    QCOMPARE(m_window.count("idle"), 1);
    QCOMPARE(m_distiller->Documents().Count(), 1);
    QVERIFY(!QFile::exists(m_folder->path("a.pdf")));
    QVERIFY(!QFile::exists(m_folder->path("c.pdf")));
}

void TestJobDriver::tellsAFailedDistilling()
{
    run({"perish.txt"});
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorPDFLibConvert")));
    QCOMPARE(m_window.count("idle"), 1);
    QVERIFY(!QFile::exists(m_folder->path("perish.pdf")));
}

void TestJobDriver::skipsADocumentWhoseDistilledFileIsMissing()
{
    run({"a.txt", "undistillable.txt", "c.txt"});
    QTRY_COMPARE(m_window.count("idle"), 3);
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorPDFLibConvert")));
    QVERIFY(QFile::exists(m_folder->path("a.pdf")));
    QVERIFY(QFile::exists(m_folder->path("c.pdf")));
    QVERIFY(!QFile::exists(m_folder->path("undistillable.pdf")));
}

void TestJobDriver::tellsAFailedMerge()
{
    m_window.optLink = true;
    m_window.answer = m_folder->path("all.pdf");
    run({"a.txt", "unmergeable.txt"});
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorPDFLibMerge")));
    QCOMPARE(m_window.count("idle"), 1);
    QVERIFY(m_window.questions.isEmpty());
    QVERIFY(!QFile::exists(m_window.answer));
}

void TestJobDriver::tellsThatAResultCannotBeCopied()
{
    m_window.optLink = true;
    m_window.answer = m_folder->path("no such folder/all.pdf");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no such folder")));
    run({"a.txt", "b.txt"});
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorCopyFilename1 ") + m_window.answer +
                                     QStringLiteral("ErrorCopyFilename2")));
    QCOMPARE(m_window.count("idle"), 1);
}

void TestJobDriver::copiesOverAnInputWithoutAPoint()
{
    // The component gives every printed file a point; another one need not.
    const auto input = m_folder->write("report", "the document");
    m_distiller->Documents().Add(input);
    m_distiller->Documents().setOutputFilename(1, m_folder->write("0.tmp", "pdf"));
    auto success = true;
    auto duration = 0.0F;
    Q_EMIT m_distiller->OnComplete(success, duration);
    QCOMPARE(contentOf(input), QByteArray("pdf"));
    QVERIFY(messages().isEmpty());
}

void TestJobDriver::clampsAndWeighsTheProgress()
{
    qputenv("QUORLIN_FAKE", "progress");
    m_window.optLink = true;
    m_window.answer = m_folder->path("all.pdf");
    run({"a.txt", "b.txt"});
    QVERIFY(!m_window.percents.isEmpty());
    QVERIFY(m_window.percents.contains(0));
    QVERIFY(m_window.percents.contains(40));
    QVERIFY(m_window.percents.contains(80));
    QVERIFY(m_window.percents.contains(100));
    for (const auto percent : std::as_const(m_window.percents))
        QVERIFY2(percent >= 0 && percent <= 100, qPrintable(QString::number(percent)));
}

void TestJobDriver::handsOnThePrinterAndTheJobOptions()
{
    m_window.position = 1;
    run({"a.txt"});
    QCOMPARE(m_lib->PrinterName(), QStringLiteral("Test PDF"));
    QCOMPARE(m_distiller->Documents().Item(1).text3(), m_folder->path("Settings/h.joboptions"));
}

void TestJobDriver::nextJobWorksAfterAFailedOne()
{
    run({"fail.txt"});
    m_messages.clear();
    run({"a.txt"});
    QVERIFY(messages().isEmpty());
    QVERIFY(QFile::exists(m_folder->path("a.pdf")));
}

void TestJobDriver::nextJobWorksAfterTheComponentDied()
{
    run({"die.txt"});
    QCOMPARE(messages().last(), QStringLiteral("ErrorPDFLibPrint"));
    m_messages.clear();
    run({"a.txt"});
    QVERIFY(messages().isEmpty());
    QVERIFY(QFile::exists(m_folder->path("a.pdf")));
}

void TestJobDriver::aJobBegunWhileResultsAreCopiedIsNotDisturbed()
{
    auto copies = 0;
    m_afterCopy = [&] {
        // The window has been idle since the first result; the user converts once more.
        if (++copies != 2)
            return;
        QVERIFY(!m_window.working);
        m_window.list = QStringList(m_folder->write("next.txt", "next"));
        m_driver->LblConvert_Click();
        QVERIFY(m_window.working);
    };
    start({"a.txt", "b.txt", "c.txt"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_folder->path("next.pdf")), 20000);
    QTRY_VERIFY(isOver());
    for (const auto *const name : {"a.pdf", "b.pdf", "c.pdf"})
        QVERIFY2(QFile::exists(m_folder->path(name)), name);
    QVERIFY(messages().isEmpty());
    // Idle after the first result of the first job, and after the only one of the second.
    QCOMPARE(m_window.count("idle"), 2);
    QCOMPARE(m_window.count("working"), 2);
}

void TestJobDriver::leavesNoTemporaryFile()
{
    const auto before = m_folder->names();
    run({"a.txt", "b.txt"});
    QTRY_COMPARE(m_window.count("idle"), 2);
    auto expected = before + QStringList({QStringLiteral("a.pdf"), QStringLiteral("a.txt"),
                                          QStringLiteral("b.pdf"), QStringLiteral("b.txt")});
    expected.sort();
    QTRY_COMPARE(m_folder->names(), expected);
}

/// The component keeps what it printed for the next step, which does not come.
void TestJobDriver::leavesNoTemporaryFileAfterAFailedPrinting()
{
    run({"a.txt", "fail.txt", "b.txt"});
    const auto expected = m_folder->names().filter(QStringLiteral(".txt"));
    QCOMPARE(expected.size(), 3);
    QTRY_COMPARE(m_folder->names().filter(QStringLiteral("~")), QStringList());
    QVERIFY(!QFile::exists(m_folder->path("a.pdf")));
}

QTEST_GUILESS_MAIN(TestJobDriver)
#include "tst_job_driver.moc"
