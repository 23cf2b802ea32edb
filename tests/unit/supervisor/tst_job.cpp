#include "component/supervisor/Job.h"

#include "support/Reports.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Quorlin;

namespace {

/// A job whose documents end when the test says so.
class PlainJob : public Job
{
public:
    explicit PlainJob(qsizetype count) : Job(7, count, {})
    {
        connect(this, &Job::report, this, [this](const auto &message) { reports.add(message); });
        connect(this, &Job::finished, this, [this] { ++finishedCount; });
    }

    using Job::fail;
    using Job::setPercent;
    using Job::succeed;
    using Job::tell;

    Reports reports;
    int begun = 0;
    int concluded = 0;
    int finishedCount = 0;
    bool outputs = false;

protected:
    void begin() override { ++begun; }
    bool tellsOutputs() const override { return outputs; }
    void concluding() override
    {
        ++concluded;
        QVERIFY(!reports.has("complete"));
    }
};

QString path(int number)
{
    return QStringLiteral("/d/%1.ps~").arg(number);
}

} // namespace

class TestJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reportsInOrder();
    void everyReportCarriesTheJobsNumber();
    void resultsAreReportedInTheOrderOfTheList();
    void outputsAreToldOneByOneWhenTheJobWantsSo();
    void aFailureHasReasonTextAndTheNameOfAMissingOutput();
    void aFailureWithoutATextGetsTheReasonsOwn();
    void progressNeverFalls();
    void progressIsThatOfAllDocuments();
    void aDocumentIsNotAtItsEndBeforeItsResult();
    void completeIsReportedOnce();
    void theFirstResultOfADocumentCounts();
    void succeedsWhenOneDocumentCameThrough();
    void failsWhenNoDocumentCameThrough();
    void theEndNamesOneOutputForEachDocument();
    void theEndTellsTheTimeTaken();
    void aJobWithoutDocumentsEndsLater();
};

void TestJob::reportsInOrder()
{
    PlainJob job(1);
    job.start();
    QCOMPARE(job.begun, 1);
    job.tell(QStringLiteral("Printing"));
    job.setPercent(0, 50);
    job.fail(0, Reason::Damaged, {}, path(1));
    QCOMPARE(job.reports.outline(),
             QStringLiteral("start state progress failure progress complete"));
    QCOMPARE(job.concluded, 1);
    QCOMPARE(job.finishedCount, 1);
}

void TestJob::everyReportCarriesTheJobsNumber()
{
    PlainJob job(1);
    job.start();
    job.tell(QStringLiteral("Printing"));
    job.succeed(0, path(1));
    for (const auto &message : job.reports.all())
        QCOMPARE(message.value(QLatin1String("job")).toInt(), 7);
}

void TestJob::resultsAreReportedInTheOrderOfTheList()
{
    PlainJob job(4);
    job.start();
    job.fail(2, Reason::Empty, {}, path(3));
    job.fail(1, Reason::Damaged, {}, path(2));
    QCOMPARE(job.reports.failures(), QStringList());
    job.succeed(0, path(1));
    QCOMPARE(job.reports.failures(),
             QStringList({QStringLiteral("2:damaged"), QStringLiteral("3:empty")}));
    job.fail(3, Reason::Protected, {}, path(4));
    QCOMPARE(job.reports.failures().size(), 3);
}

void TestJob::outputsAreToldOneByOneWhenTheJobWantsSo()
{
    PlainJob job(3);
    job.outputs = true;
    job.start();
    job.succeed(1, path(2));
    job.succeed(2, path(3));
    QVERIFY(!job.reports.has("output"));
    job.fail(0, Reason::Damaged, {}, path(1));
    const auto outputs = job.reports.of("output");
    QCOMPARE(outputs.size(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(outputs[i].value(QLatin1String("index")).toInt(), i + 1);
        QCOMPARE(outputs[i].value(QLatin1String("file")).toString(), path(i + 1));
    }
    PlainJob quiet(1);
    quiet.start();
    quiet.succeed(0, path(1));
    QVERIFY(!quiet.reports.has("output"));
}

void TestJob::aFailureHasReasonTextAndTheNameOfAMissingOutput()
{
    PlainJob job(1);
    job.start();
    job.fail(0, Reason::ProgramMissing, QStringLiteral("gs is not installed"), path(1));
    const auto failure = job.reports.last("failure");
    QCOMPARE(failure.value(QLatin1String("index")).toInt(), 1);
    QCOMPARE(failure.value(QLatin1String("reason")).toString(), QStringLiteral("program-missing"));
    QCOMPARE(failure.value(QLatin1String("text")).toString(),
             QStringLiteral("gs is not installed"));
    QCOMPARE(job.reports.outputs(), QStringList{path(1)});
}

void TestJob::aFailureWithoutATextGetsTheReasonsOwn()
{
    PlainJob job(1);
    job.start();
    job.fail(0, Reason::Protected, {}, path(1));
    QCOMPARE(job.reports.last("failure").value(QLatin1String("text")).toString(),
             reasonText(Reason::Protected));
}

void TestJob::progressNeverFalls()
{
    PlainJob job(2);
    job.start();
    for (const int percent : {50, 20, 80, -5, 80, 1000, 90, 0})
        job.setPercent(0, percent);
    job.fail(0, Reason::Damaged, {}, path(1));
    job.setPercent(0, 10);
    job.setPercent(1, 10);
    job.succeed(1, path(2));
    const auto percents = job.reports.percents();
    QVERIFY(std::ranges::is_sorted(percents));
    QVERIFY(std::ranges::adjacent_find(percents) == percents.end());
    QCOMPARE(percents.last(), 100);
}

void TestJob::progressIsThatOfAllDocuments()
{
    PlainJob job(4);
    job.start();
    job.setPercent(0, 50);
    QCOMPARE(job.reports.percents(), QList<int>{12});
    job.succeed(0, path(1));
    QCOMPARE(job.reports.percents().last(), 25);
    job.succeed(3, path(4));
    QCOMPARE(job.reports.percents().last(), 50);
}

void TestJob::aDocumentIsNotAtItsEndBeforeItsResult()
{
    PlainJob job(1);
    job.start();
    job.setPercent(0, 100);
    QCOMPARE(job.reports.percents(), QList<int>{99});
    job.succeed(0, path(1));
    QCOMPARE(job.reports.percents(), QList<int>({99, 100}));
}

void TestJob::completeIsReportedOnce()
{
    PlainJob job(2);
    job.start();
    job.succeed(0, path(1));
    QVERIFY(!job.reports.has("complete"));
    job.succeed(1, path(2));
    job.succeed(1, path(2));
    job.fail(0, Reason::Damaged, {}, path(1));
    job.setPercent(1, 10);
    QCOMPARE(job.reports.of("complete").size(), 1);
    QCOMPARE(job.reports.all().last(), job.reports.last("complete"));
    QCOMPARE(job.finishedCount, 1);
    QCOMPARE(job.concluded, 1);
}

void TestJob::theFirstResultOfADocumentCounts()
{
    PlainJob job(2);
    job.start();
    job.fail(0, Reason::Damaged, {}, path(1));
    job.succeed(0, path(3));
    job.succeed(1, path(2));
    QCOMPARE(job.reports.outputs(), QStringList({path(1), path(2)}));
    QCOMPARE(job.reports.failures(), QStringList{QStringLiteral("1:damaged")});
}

void TestJob::succeedsWhenOneDocumentCameThrough()
{
    PlainJob job(3);
    job.start();
    job.fail(0, Reason::Damaged, {}, path(1));
    job.fail(1, Reason::Damaged, {}, path(2));
    job.succeed(2, path(3));
    QCOMPARE(job.reports.last("complete").value(QLatin1String("success")), QJsonValue(true));
}

void TestJob::failsWhenNoDocumentCameThrough()
{
    PlainJob job(2);
    job.start();
    job.fail(1, Reason::Damaged, {}, path(2));
    job.fail(0, Reason::Protected, {}, path(1));
    QCOMPARE(job.reports.last("complete").value(QLatin1String("success")), QJsonValue(false));
}

void TestJob::theEndNamesOneOutputForEachDocument()
{
    PlainJob job(3);
    job.start();
    job.succeed(2, path(3));
    job.fail(0, Reason::Damaged, {}, path(1));
    job.succeed(1, path(2));
    QCOMPARE(job.reports.outputs(), QStringList({path(1), path(2), path(3)}));
}

void TestJob::theEndTellsTheTimeTaken()
{
    PlainJob job(1);
    job.start();
    QTest::qWait(50);
    job.succeed(0, path(1));
    const auto seconds = job.reports.last("complete").value(QLatin1String("duration")).toDouble();
    QVERIFY(seconds >= 0.049);
    QVERIFY(seconds < 30);
}

void TestJob::aJobWithoutDocumentsEndsLater()
{
    PlainJob job(0);
    QSignalSpy finished(&job, &Job::finished);
    job.start();
    QCOMPARE(finished.count(), 0);
    QVERIFY(finished.wait());
    QCOMPARE(job.reports.outline(), QStringLiteral("start complete"));
    QCOMPARE(job.begun, 0);
}

QTEST_GUILESS_MAIN(TestJob)
#include "tst_job.moc"
