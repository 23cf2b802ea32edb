#include "contract/Scene.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

using namespace Quorlin;

namespace {

QString fake()
{
    return QStringLiteral(QUORLIN_FAKE_COMPONENT);
}

} // namespace

/// A component that dies, lies or talks nonsense: the objects keep their life cycle.
class tst_component_faults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void percentagesOutsideTheScaleArePassedOn();
    void deathInTheMiddleEndsTheJobWithReasons();
    void deathEndsEveryRunningObject();
    void theNextStartStartsTheComponentAnew();
    void aRestartFromTheCompletionOfALostJobWorks();
    void aMissingProgramFailsTheJob();
    void aFileThatIsNoProgramFailsTheJob();
    void anEndBeforeTheGreetingFailsTheJob();
    void anUnknownVersionFailsTheJob();
    void aComponentThatNeverGreetsIsGivenUp();
    void garbageBetweenTheReportsIsIgnored();
    void anOverlongLineIsIgnored();
    void piecesOfLinesAreJoined();
    void aSecondCompletionIsIgnored();
    void reportsOfStrangersAreIgnored();
    void aRefusedJobFails();
    void aSilentComponentStillNamesEveryOutput();
    void aNamedOutputMayBeMissingWithoutAFailure();
    void oneUnreadablePdfFailsTheMerge();
    void endingWhileItWorksTakesNoTime();
    void aDeafComponentIsKilled();
    void anObjectMayGoWhileItWorks();
    void anObjectOutlivesItsClient();
    void theClientMayGoWithinAHandler();
    void warmingStartsTheComponentAndNoJob();
    void theRequestCarriesWhatWasSet();

private:
    [[nodiscard]] QByteArray log() const { return contentOf(m_log); }
    [[nodiscard]] QString pidFolder() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_log;
};

void tst_component_faults::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_log = m_folder->filePath(QStringLiteral("log"));
    qputenv("QUORLIN_FAKE", "");
    qputenv("QUORLIN_FAKE_LOG", m_log.toUtf8());
}

QString tst_component_faults::pidFolder() const
{
    const auto pid = log().split('\n').value(0).mid(4);
    return QStringLiteral("/proc/") + QString::fromLatin1(pid);
}

void tst_component_faults::percentagesOutsideTheScaleArePassedOn()
{
    qputenv("QUORLIN_FAKE", "progress");
    Scene scene(fake());
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->percents(), QList<qint32>({-5, 250, 100}));
}

void tst_component_faults::deathInTheMiddleEndsTheJobWithReasons()
{
    Scene scene(fake());
    scene.print({scene.document("a.txt"), scene.document("protected.txt"),
                 scene.document("die.txt"), scene.document("d.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
    QCOMPARE(scene.printing->events().last(), QStringLiteral("complete false"));
    QCOMPARE(scene.printing->events("output").size(), 2);
    QCOMPARE(
        scene.printing->events("failed"),
        QStringList({QStringLiteral("failed 2 protected"), QStringLiteral("failed 1 engine-failed"),
                     QStringLiteral("failed 3 engine-failed"),
                     QStringLiteral("failed 4 engine-failed")}));
    QVERIFY(scene.printing->failureTexts().last().contains(QStringLiteral("ended with code 9")));
}

void tst_component_faults::deathEndsEveryRunningObject()
{
    Scene scene(fake());
    scene.print({scene.document("die.txt")});
    scene.distil({scene.document("a.ps")});
    scene.merge({scene.document("b.pdf")});
    TRY_COMPLETED(scene.printing, 1);
    TRY_COMPLETED(scene.distilling, 1);
    TRY_COMPLETED(scene.merging, 1);
    for (const auto *recorder :
         {scene.printing.get(), scene.distilling.get(), scene.merging.get()}) {
        QVERIFY(!recorder->success());
        QCOMPARE(recorder->events().first(), QStringLiteral("start"));
        QCOMPARE(recorder->events("failed").size(), 1);
    }
}

void tst_component_faults::theNextStartStartsTheComponentAnew()
{
    Scene scene(fake());
    scene.print({scene.document("die.txt")});
    TRY_COMPLETED(scene.printing, 1);
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 2);
    QVERIFY(scene.printing->success());
    QCOMPARE(log().count("pid "), 2);
}

void tst_component_faults::aRestartFromTheCompletionOfALostJobWorks()
{
    qputenv("QUORLIN_FAKE", "once:" + m_folder->filePath(QStringLiteral("flag")).toUtf8());
    Scene scene(fake());
    QObject::connect(scene.lib.get(), &PDFLib::OnComplete, scene.lib.get(), [&scene] {
        if (!scene.printing->success())
            scene.lib->Start();
    });
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 2);
    QVERIFY(scene.printing->success());
}

void tst_component_faults::aMissingProgramFailsTheJob()
{
    Scene scene(QStringLiteral("/nowhere/quorlin-pdf"));
    scene.print({scene.document("a.txt"), scene.document("b.txt")});
    QVERIFY(scene.printing->events().isEmpty());
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(scene.printing->events(),
             QStringList({QStringLiteral("start"), QStringLiteral("failed 1 program-missing"),
                          QStringLiteral("failed 2 program-missing"),
                          QStringLiteral("complete false")}));
    QVERIFY(scene.printing->failureTexts().first().contains(QLatin1String("/nowhere/")));
}

void tst_component_faults::aFileThatIsNoProgramFailsTheJob()
{
    const auto path = m_folder->filePath(QStringLiteral("quorlin-pdf"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("\x7f"
               "ELF and no more");
    file.setPermissions(file.permissions() | QFile::ExeOwner);
    file.close();
    Scene scene(path);
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
}

void tst_component_faults::anEndBeforeTheGreetingFailsTheJob()
{
    qputenv("QUORLIN_FAKE", "absent");
    Scene scene(fake());
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
    QVERIFY(scene.printing->failureTexts().first().contains(QStringLiteral("code 3")));
}

void tst_component_faults::anUnknownVersionFailsTheJob()
{
    qputenv("QUORLIN_FAKE", "version");
    Scene scene(fake());
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
    QVERIFY(scene.printing->failureTexts().first().contains(QStringLiteral("version 99")));
    QTRY_VERIFY(!QFileInfo::exists(pidFolder()));
    QVERIFY(!log().contains("print"));
}

void tst_component_faults::aComponentThatNeverGreetsIsGivenUp()
{
    qputenv("QUORLIN_FAKE", "mute");
    auto settings = settingsFor(fake());
    settings.greeting = std::chrono::milliseconds(300);
    Scene scene(settings);
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
    QTRY_VERIFY(!QFileInfo::exists(pidFolder()));
}

void tst_component_faults::garbageBetweenTheReportsIsIgnored()
{
    qputenv("QUORLIN_FAKE", "garbage");
    Scene scene(fake());
    QStringList logged;
    QObject::connect(scene.client.get(), &ComponentClient::logged, scene.client.get(),
                     [&logged](const QString &line) { logged.append(line); });
    scene.print({scene.document("a.txt"), scene.document("b.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->events("output").size(), 2);
    QVERIFY(!logged.filter(QStringLiteral("this is no JSON")).isEmpty());
}

void tst_component_faults::anOverlongLineIsIgnored()
{
    qputenv("QUORLIN_FAKE", "overlong");
    Scene scene(fake());
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->events("output").size(), 1);
}

void tst_component_faults::piecesOfLinesAreJoined()
{
    qputenv("QUORLIN_FAKE", "split");
    Scene scene(fake());
    scene.print({scene.document("käse.txt"), scene.document("b.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->outputs().value(0), scene.absent("käse.ps~"));
}

void tst_component_faults::aSecondCompletionIsIgnored()
{
    qputenv("QUORLIN_FAKE", "twice");
    Scene scene(fake());
    QObject::connect(scene.lib.get(), &PDFLib::OnComplete, scene.lib.get(),
                     [&scene] { scene.distil(scene.printing->outputs()); });
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.distilling, 1);
    scene.merge({scene.document("b.pdf")});
    TRY_COMPLETED(scene.merging, 1);
    QCOMPARE(scene.printing->completions(), 1);
    QCOMPARE(scene.distilling->completions(), 1);
}

void tst_component_faults::reportsOfStrangersAreIgnored()
{
    qputenv("QUORLIN_FAKE", "strangers");
    Scene scene(fake());
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->events("output"), QStringList(QStringLiteral("output 1")));
    QCOMPARE(scene.printing->events("failed"), QStringList());
}

void tst_component_faults::aRefusedJobFails()
{
    qputenv("QUORLIN_FAKE", "refuse");
    Scene scene(fake());
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
    QCOMPARE(scene.printing->failureTexts(), QStringList(QStringLiteral("not today")));
    QVERIFY(!scene.lib->isRunning());
}

void tst_component_faults::aSilentComponentStillNamesEveryOutput()
{
    qputenv("QUORLIN_FAKE", "silent");
    Scene scene(fake());
    scene.print({scene.document("a.txt"), scene.document("b.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(scene.printing->printed(),
             QStringList({scene.absent("a.ps~"), scene.absent("b.ps~")}));
    QCOMPARE(scene.printing->events().last(), QStringLiteral("complete true"));
}

void tst_component_faults::aNamedOutputMayBeMissingWithoutAFailure()
{
    Scene scene(fake());
    scene.print({scene.document("a.txt"), scene.document("missing.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->events("output").size(), 2);
    QVERIFY(!QFileInfo::exists(scene.printing->outputs().value(1)));
}

void tst_component_faults::oneUnreadablePdfFailsTheMerge()
{
    Scene scene(fake());
    scene.merge({scene.document("a.pdf"), scene.document("unmergeable.pdf")});
    TRY_COMPLETED(scene.merging, 1);
    QVERIFY(!scene.merging->success());
    QCOMPARE(scene.merging->events("failed").size(), 2);
}

void tst_component_faults::endingWhileItWorksTakesNoTime()
{
    Scene scene(fake());
    scene.print({scene.document("a.txt"), scene.document("dawdle.txt")});
    QTRY_COMPARE(scene.printing->events("output").size(), 1);
    QElapsedTimer clock;
    clock.start();
    scene.end();
    QVERIFY2(clock.elapsed() < 1500, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(!QFileInfo::exists(pidFolder()));
    QVERIFY(log().endsWith("end\n"));
    QCOMPARE(scene.leftovers(), QStringList());
    QCOMPARE(scene.printing->completions(), 0);
}

void tst_component_faults::aDeafComponentIsKilled()
{
    qputenv("QUORLIN_FAKE", "deaf");
    auto settings = settingsFor(fake());
    settings.farewell = std::chrono::milliseconds(200);
    Scene scene(settings);
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    const auto folder = pidFolder();
    QVERIFY(QFileInfo::exists(folder));
    QElapsedTimer clock;
    clock.start();
    scene.end();
    QVERIFY(clock.elapsed() < 1500);
    QVERIFY(!QFileInfo::exists(folder));
}

void tst_component_faults::anObjectMayGoWhileItWorks()
{
    Scene scene(fake());
    scene.print({scene.document("a.txt")});
    scene.lib.reset();
    scene.distil({scene.document("b.ps")});
    TRY_COMPLETED(scene.distilling, 1);
    QVERIFY(scene.distilling->success());
    QCOMPARE(scene.printing->completions(), 0);
}

void tst_component_faults::anObjectOutlivesItsClient()
{
    Scene scene(fake());
    scene.print({scene.document("dawdle.txt")});
    QTRY_VERIFY(!scene.printing->events().isEmpty());
    scene.client.reset();
    QCOMPARE(scene.printing->completions(), 0);
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
    QVERIFY(!scene.lib->isRunning());
}

void tst_component_faults::theClientMayGoWithinAHandler()
{
    Scene scene(fake());
    QObject::connect(scene.lib.get(), &PDFLib::OnOutputFilename, scene.lib.get(),
                     [&scene] { scene.client.reset(); });
    scene.print({scene.document("a.txt"), scene.document("b.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
}

void tst_component_faults::warmingStartsTheComponentAndNoJob()
{
    Scene scene(fake());
    scene.client->warm();
    QTRY_VERIFY(log().contains("{\"type\":\"warm\"}"));
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(log().count("pid "), 1);
}

void tst_component_faults::theRequestCarriesWhatWasSet()
{
    Scene scene(fake());
    scene.lib->setPrinterName(QStringLiteral("Büro"));
    scene.lib->setLimits({std::chrono::seconds(7), std::chrono::seconds(70), 3});
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(log().contains("\"printer\":\"Büro\""));
    QVERIFY(log().contains("\"limits\":{\"atOnce\":3,\"stall\":7,\"total\":70}"));
    scene.merge({scene.document("b.pdf")});
    TRY_COMPLETED(scene.merging, 1);
    QVERIFY(log().contains("\"bookmarks\":true"));
}

QTEST_GUILESS_MAIN(tst_component_faults)
#include "tst_component_faults.moc"
