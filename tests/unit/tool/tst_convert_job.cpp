#include "convert/ComponentClient.h"
#include "tool/ConvertJob.h"
#include "unit/tool/ToolFolder.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

using namespace Quorlin;

/// The chain of printing, distilling and merging, with the fake component.
class tst_convert_job : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyDocumentComesThrough();
    void aFailureCostsNoOtherDocument();
    void documentsThatFailedBeforeArePassedOver();
    void aMergeTakesWhatIsLeft();
    void aSingleSurvivorIsTheMergedFile();
    void aFailedMergeFailsEveryDocument();
    void theDeathOfTheComponentIsAReasonForEach();
    void nothingToDoEndsAtOnce();
    void progressIsOneScaleOverAllSteps();
    void aCancelledJobIsSilent();

private:
    void run(const QStringList &names, bool merges);
    [[nodiscard]] const DocumentRecord &document(int index) const
    {
        return m_job->documents().at(index);
    }

    std::unique_ptr<ToolFolder> m_folder;
    std::unique_ptr<ComponentClient> m_client;
    std::unique_ptr<ConvertJob> m_job;
    QList<int> m_percents;
};

void tst_convert_job::init()
{
    m_job.reset();
    m_client.reset();
    m_percents.clear();
    qputenv("QUORLIN_FAKE", "");
    m_folder.reset(); // gives the current folder back first
    m_folder = std::make_unique<ToolFolder>();
    m_folder->writeSettings("program");
    ComponentSettings settings;
    settings.program = QStringLiteral(QUORLIN_FAKE_COMPONENT);
    m_client = std::make_unique<ComponentClient>(settings);
}

void tst_convert_job::run(const QStringList &names, bool merges)
{
    QList<DocumentRecord> documents;
    for (const auto &name : names) {
        DocumentRecord record;
        record.input = m_folder->write(name.toUtf8());
        if (name.contains(QLatin1String("refused")))
            record.reason = Reason::Empty;
        documents.append(record);
    }
    const ConvertJob::Plan plan{
        QStringLiteral("P"), m_folder->path("program/Settings/High.joboptions"), merges, {}};
    m_job = std::make_unique<ConvertJob>(*m_client, plan, documents);
    connect(m_job.get(), &ConvertJob::progressed, this,
            [this](int percent) { m_percents.append(percent); });
    QSignalSpy finished(m_job.get(), &ConvertJob::finished);
    m_job->start();
    QCOMPARE(finished.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 20'000);
}

void tst_convert_job::everyDocumentComesThrough()
{
    run({QStringLiteral("a.txt"), QStringLiteral("b.odt")}, false);
    for (const int index : {0, 1}) {
        QVERIFY(!document(index).failed());
        QVERIFY(QFileInfo(document(index).distilled).isFile());
        QVERIFY(!QFileInfo::exists(document(index).printed));
    }
    QVERIFY(m_job->mergedFile().isEmpty());
}

void tst_convert_job::aFailureCostsNoOtherDocument()
{
    run({QStringLiteral("a.txt"), QStringLiteral("protected.txt"),
         QStringLiteral("undistillable.txt"), QStringLiteral("missing.txt"),
         QStringLiteral("b.txt")},
        false);
    QVERIFY(!document(0).failed() && !document(4).failed());
    QCOMPARE(document(1).reason, Reason::Protected);
    QCOMPARE(document(2).reason, Reason::Damaged);
    QCOMPARE(document(3).reason, Reason::EngineFailed);
    QCOMPARE(document(3).detail, QStringLiteral("it was not printed"));
    QVERIFY(m_folder->read(document(4).distilled).startsWith("%PDF"));
}

void tst_convert_job::documentsThatFailedBeforeArePassedOver()
{
    run({QStringLiteral("refused.txt"), QStringLiteral("b.txt")}, false);
    QCOMPARE(document(0).reason, Reason::Empty);
    QVERIFY(!document(1).failed());
}

void tst_convert_job::aMergeTakesWhatIsLeft()
{
    run({QStringLiteral("a.txt"), QStringLiteral("fail.txt"), QStringLiteral("b.txt")}, true);
    QVERIFY(document(1).failed());
    QVERIFY(QFileInfo(m_job->mergedFile()).isFile());
    QVERIFY(!QFileInfo::exists(document(0).distilled));
}

void tst_convert_job::aSingleSurvivorIsTheMergedFile()
{
    run({QStringLiteral("fail.txt"), QStringLiteral("b.txt")}, true);
    QCOMPARE(m_job->mergedFile(), document(1).distilled);
}

void tst_convert_job::aFailedMergeFailsEveryDocument()
{
    run({QStringLiteral("a.txt"), QStringLiteral("unmergeable.txt")}, true);
    QVERIFY(document(0).failed() && document(1).failed());
    QVERIFY(m_job->mergedFile().isEmpty());
}

void tst_convert_job::theDeathOfTheComponentIsAReasonForEach()
{
    run({QStringLiteral("a.txt"), QStringLiteral("perish.txt")}, false);
    for (const int index : {0, 1})
        QVERIFY2(document(index).detail.contains(QStringLiteral("component ended")),
                 qPrintable(document(index).detail));
}

void tst_convert_job::nothingToDoEndsAtOnce()
{
    run({QStringLiteral("refused.txt")}, true);
    QVERIFY(m_percents.isEmpty());
}

void tst_convert_job::progressIsOneScaleOverAllSteps()
{
    qputenv("QUORLIN_FAKE", "progress");
    run({QStringLiteral("a.txt"), QStringLiteral("b.txt")}, true);
    QCOMPARE(m_percents, QList<int>({0, 40, 20, 40, 40, 80, 60, 80, 80, 100, 90, 100}));
}

void tst_convert_job::aCancelledJobIsSilent()
{
    DocumentRecord record;
    record.input = m_folder->write("dawdle.txt");
    m_job = std::make_unique<ConvertJob>(*m_client, ConvertJob::Plan(), QList{record});
    QSignalSpy failed(m_job.get(), &ConvertJob::documentFailed);
    QSignalSpy stage(m_job.get(), &ConvertJob::stageChanged);
    m_job->start();
    QTRY_COMPARE(stage.count(), 1);
    m_job->cancel();
    QCOMPARE(document(0).reason, Reason::Cancelled);
    QCOMPARE(failed.count(), 0);
}

QTEST_GUILESS_MAIN(tst_convert_job)
#include "tst_convert_job.moc"
