#include "contract/Scene.h"

#include <QFileInfo>
#include <QTest>

#include <cmath>

using namespace Quorlin;

/// The contract of PDFLib, PDFDistiller and PDFMerger, for any component. The variable
/// QUORLIN_CONTRACT_COMPONENT names the program; without it the fake is tested.
class tst_contract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(QFileInfo(component()).isExecutable(), "no such component"); }

    void theListCountsFromOne();
    void positionsOutsideTheListAreAnsweredSafely();
    void thePrinterHasADefaultName();
    void theAcceptanceQueryKnowsTheReason();
    void fiveListsTellTheExtensions();
    void startReturnsBeforeAnyEvent();
    void eventsComeInOrderWithOneCompletion();
    void everyPrintedDocumentIsNamedOnceInOrder();
    void outputsAreReadableInTheOrderOfAdding();
    void documentsOneAtATimeComeInTheOrderOfAdding();
    void aMissingDocumentNamesAMissingFileAndTheJobGoesOn();
    void aDamagedDocumentFailsWithItsReason();
    void aStepWithoutAnyResultFails();
    void anEmptyListFails();
    void aFaultyJobOptionsFileFailsTheDistiller();
    void stepsAreChainedFromTheirHandlers();
    void anObjectIsRefilledAndRestartedFromItsCompletion();
    void aSecondStartWhileWorkingIsIgnored();
    void theListIsLockedWhileWorking();
    void handlersRunToTheirEndBeforeTheNextEvent();
    void handlersMayWriteIntoTheArguments();
    void progressStaysOnItsScaleAndNeverFalls();
};

void tst_contract::theListCountsFromOne()
{
    Scene scene(component());
    auto &list = scene.distiller->Documents();
    QCOMPARE(list.Count(), 0);
    list.Add(QStringLiteral("/d/a.ps"), QString(), QStringLiteral("/s/x.joboptions"), QString());
    list.Add(QStringLiteral("/d/b.ps"), QString(), QString(), QString());
    QCOMPARE(list.Count(), 2);
    QCOMPARE(list.Item(1).Filename(), QStringLiteral("/d/a.ps"));
    QCOMPARE(list.Item(2).Filename(), QStringLiteral("/d/b.ps"));
    QCOMPARE(list.Item(1).OutputFilename(), QString());
    list.Clear();
    QCOMPARE(list.Count(), 0);
}

void tst_contract::positionsOutsideTheListAreAnsweredSafely()
{
    Scene scene(component());
    auto &list = scene.lib->Documents();
    list.Add(QStringLiteral("/d/a.txt"), {}, {}, {});
    for (const qint32 index :
         {0, -1, 2, std::numeric_limits<qint32>::max(), std::numeric_limits<qint32>::min()}) {
        QCOMPARE(list.Item(index).Filename(), QString());
        QCOMPARE(list.Item(index).OutputFilename(), QString());
    }
}

void tst_contract::thePrinterHasADefaultName()
{
    Scene scene(component());
    QCOMPARE(scene.lib->PrinterName(), QStringLiteral("Varnex PDF"));
    scene.lib->setPrinterName(QStringLiteral("Other"));
    QCOMPARE(scene.lib->property("PrinterName").toString(), QStringLiteral("Other"));
}

void tst_contract::theAcceptanceQueryKnowsTheReason()
{
    Scene scene(component());
    QCOMPARE(scene.lib->lastRefusal().code(), 0);
    QVERIFY(scene.lib->acceptsFile(scene.document("letter.TXT")));
    QVERIFY(scene.lib->acceptsFile(scene.document("drawing.ps")));
    QVERIFY(!scene.lib->acceptsFile(scene.write("false.ps", "no PostScript")));
    QCOMPARE(scene.lib->lastRefusal().code(), 42);
    QVERIFY(!scene.lib->acceptsFile(scene.write("unknown.xyz", "x")));
    QVERIFY(scene.lib->lastRefusal().code() != 42);
    QCOMPARE(scene.lib->lastRefusal().reason(), Reason::UnknownFormat);
    QVERIFY(!scene.lib->lastRefusal().text().isEmpty());
}

void tst_contract::fiveListsTellTheExtensions()
{
    const auto all = PDFLib::extensions(Family::All);
    for (const auto family : {Family::Word, Family::Excel, Family::PowerPoint, Family::Pdf}) {
        const auto extensions = PDFLib::extensions(family);
        QVERIFY(!extensions.isEmpty());
        for (const auto &extension : extensions)
            QVERIFY2(all.contains(extension), qPrintable(extension));
    }
    QVERIFY(all.contains(QStringLiteral("ps")));
    QCOMPARE(PDFLib::extensions(Family::Pdf), QStringList(QStringLiteral("pdf")));
}

void tst_contract::startReturnsBeforeAnyEvent()
{
    Scene scene(component());
    scene.print({scene.document("letter.txt")});
    QVERIFY(scene.printing->events().isEmpty());
    QVERIFY(scene.lib->isRunning());
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.lib->isRunning());
}

void tst_contract::eventsComeInOrderWithOneCompletion()
{
    Scene scene(component());
    scene.print({scene.document("letter.txt"), scene.document("page.html")});
    TRY_COMPLETED(scene.printing, 1);
    scene.distil(scene.printing->outputs());
    TRY_COMPLETED(scene.distilling, 1);
    scene.merge(scene.distilling->outputs());
    TRY_COMPLETED(scene.merging, 1);
    for (const auto *recorder :
         {scene.printing.get(), scene.distilling.get(), scene.merging.get()}) {
        QCOMPARE(recorder->events().first(), QStringLiteral("start"));
        QCOMPARE(recorder->events().last(), QStringLiteral("complete true"));
        QCOMPARE(recorder->events("start").size(), 1);
        QCOMPARE(recorder->completions(), 1);
        QVERIFY(std::isfinite(recorder->duration()) && recorder->duration() >= 0);
    }
}

void tst_contract::everyPrintedDocumentIsNamedOnceInOrder()
{
    Scene scene(component());
    scene.print({scene.document("one.fodt"), scene.document("two.html"), scene.document("three.ps"),
                 scene.document("four.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(scene.printing->events("output"),
             QStringList({QStringLiteral("output 1"), QStringLiteral("output 2"),
                          QStringLiteral("output 3"), QStringLiteral("output 4")}));
    for (const auto &file : scene.printing->printed())
        QVERIFY2(contentOf(file).startsWith("%!"), qPrintable(file));
}

void tst_contract::outputsAreReadableInTheOrderOfAdding()
{
    Scene scene(component());
    const QStringList files{scene.document("b.txt"), scene.document("a.txt"),
                            scene.document("c.html")};
    scene.print(files);
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->outputs(), scene.printing->printed());
    QCOMPARE(scene.printing->outputs().size(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(QFileInfo(scene.printing->outputs().at(i)).completeBaseName(),
                 QFileInfo(files.at(i)).completeBaseName());
        QCOMPARE(scene.lib->Documents().Item(i + 1).Filename(), files.at(i));
    }
}

void tst_contract::documentsOneAtATimeComeInTheOrderOfAdding()
{
    Scene scene(component());
    const QStringList files{scene.document("b.txt"), scene.document("a.txt"),
                            scene.document("c.html")};
    scene.lib->setLimits({.atOnce = 1});
    scene.distiller->setLimits({.atOnce = 1});
    scene.print(files);
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(scene.printing->printed().size(), 3);
    scene.distil(scene.printing->outputs());
    TRY_COMPLETED(scene.distilling, 1);
    QVERIFY(scene.distilling->success());
    for (int i = 0; i < 3; ++i)
        QVERIFY(contentOf(scene.distilling->outputs().at(i)).startsWith("%PDF-"));
}

void tst_contract::aMissingDocumentNamesAMissingFileAndTheJobGoesOn()
{
    Scene scene(component());
    scene.print(
        {scene.document("first.txt"), scene.absent("gone.txt"), scene.document("last.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->events("output").size(), 3);
    QVERIFY(QFileInfo::exists(scene.printing->outputs().at(0)));
    QVERIFY(!QFileInfo::exists(scene.printing->outputs().at(1)));
    QVERIFY(QFileInfo::exists(scene.printing->outputs().at(2)));
    QCOMPARE(scene.printing->events("failed"), QStringList(QStringLiteral("failed 2 not-found")));
}

void tst_contract::aDamagedDocumentFailsWithItsReason()
{
    Scene scene(component());
    scene.print({scene.write("damaged.pdf", "%PDF-1.4\nno objects\n"), scene.document("b.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(scene.printing->events("failed"), QStringList(QStringLiteral("failed 1 damaged")));
    QVERIFY(!scene.printing->failureTexts().first().isEmpty());
}

void tst_contract::aStepWithoutAnyResultFails()
{
    Scene scene(component());
    scene.print({scene.absent("gone.txt"), scene.absent("lost.html")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(!scene.printing->success());
    QCOMPARE(scene.printing->events("failed").size(), 2);
}

void tst_contract::anEmptyListFails()
{
    Scene scene(component());
    scene.lib->Start();
    QVERIFY(scene.printing->events().isEmpty());
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(scene.printing->events(),
             QStringList({QStringLiteral("start"), QStringLiteral("complete false")}));
}

void tst_contract::aFaultyJobOptionsFileFailsTheDistiller()
{
    Scene scene(component());
    scene.distiller->Documents().Add(scene.document("drawing.ps"), {},
                                     scene.absent("none.joboptions"), {});
    scene.distiller->Start();
    TRY_COMPLETED(scene.distilling, 1);
    QVERIFY(!scene.distilling->success());
    QCOMPARE(scene.distilling->events("failed"),
             QStringList(QStringLiteral("failed 1 bad-options")));
}

void tst_contract::stepsAreChainedFromTheirHandlers()
{
    Scene scene(component());
    QObject::connect(scene.lib.get(), &PDFLib::OnComplete, scene.lib.get(),
                     [&scene] { scene.distil(scene.printing->outputs()); });
    QObject::connect(scene.distiller.get(), &PDFDistiller::OnComplete, scene.distiller.get(),
                     [&scene] { scene.merge(scene.distilling->outputs()); });
    scene.print({scene.document("a.txt"), scene.document("b.html")});
    TRY_COMPLETED(scene.merging, 1);
    QVERIFY(scene.printing->success() && scene.distilling->success() && scene.merging->success());
    QCOMPARE(scene.leftovers(), QStringList(QFileInfo(scene.merging->outputs().at(0)).fileName()));
}

void tst_contract::anObjectIsRefilledAndRestartedFromItsCompletion()
{
    Scene scene(component());
    const auto second = scene.document("second.txt");
    QObject::connect(scene.lib.get(), &PDFLib::OnComplete, scene.lib.get(), [&scene, second] {
        if (scene.printing->completions() == 1)
            scene.print({second});
    });
    scene.print({scene.document("first.txt")});
    TRY_COMPLETED(scene.printing, 2);
    QVERIFY(scene.printing->success());
    QCOMPARE(QFileInfo(scene.printing->outputs().value(0)).completeBaseName(),
             QStringLiteral("second"));
    QCOMPARE(scene.printing->events("start").size(), 2);
}

void tst_contract::aSecondStartWhileWorkingIsIgnored()
{
    Scene scene(component());
    scene.print({scene.document("letter.txt")});
    scene.lib->Start();
    TRY_COMPLETED(scene.printing, 1);
    scene.print({scene.document("other.txt")});
    TRY_COMPLETED(scene.printing, 2);
    QCOMPARE(scene.printing->events("start").size(), 2);
}

void tst_contract::theListIsLockedWhileWorking()
{
    Scene scene(component());
    scene.print({scene.document("letter.txt")});
    scene.lib->Documents().Add(QStringLiteral("/d/late.txt"), {}, {}, {});
    scene.lib->Documents().Clear();
    QCOMPARE(scene.lib->Documents().Count(), 1);
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    scene.lib->Documents().Clear();
    QCOMPARE(scene.lib->Documents().Count(), 0);
}

void tst_contract::handlersRunToTheirEndBeforeTheNextEvent()
{
    Scene scene(component());
    QStringList during;
    QObject::connect(scene.lib.get(), &PDFLib::OnOutputFilename, scene.lib.get(), [&] {
        const auto before = scene.printing->events();
        QTest::qWait(300); // a message box would do the same
        during.append(scene.printing->events().mid(before.size()));
    });
    scene.print({scene.document("a.txt"), scene.document("b.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(during, QStringList());
    QCOMPARE(scene.printing->events("output").size(), 2);
}

void tst_contract::handlersMayWriteIntoTheArguments()
{
    Scene scene(component());
    QObject::connect(scene.lib.get(), &PDFLib::OnProgress, scene.lib.get(),
                     [](qint32 &percent) { percent = -1; });
    QObject::connect(scene.lib.get(), &PDFLib::OnOutputFilename, scene.lib.get(),
                     [](qint32 &index, QString &filename) {
                         index = 99;
                         filename.clear();
                     });
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QVERIFY(QFileInfo::exists(scene.printing->outputs().value(0)));
}

void tst_contract::progressStaysOnItsScaleAndNeverFalls()
{
    Scene scene(component());
    scene.print({scene.document("a.txt"), scene.document("b.txt"), scene.document("c.txt")});
    TRY_COMPLETED(scene.printing, 1);
    const auto percents = scene.printing->percents();
    QVERIFY(!percents.isEmpty());
    QVERIFY(std::is_sorted(percents.begin(), percents.end()));
    QVERIFY(percents.first() >= 0 && percents.last() <= 100);
}

QTEST_GUILESS_MAIN(tst_contract)
#include "tst_contract.moc"
