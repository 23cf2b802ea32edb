#include "contract/Scene.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace Quorlin;

/// Where the component puts its files and who removes them, for any component. The variable
/// QUORLIN_CONTRACT_COMPONENT names the program; without it the fake is tested.
class tst_contract_files : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(QFileInfo(component()).isExecutable(), "no such component"); }

    void distilledFilesLieBesideTheirInput();
    void theDistillerRemovesWhatWasPrintedForIt();
    void aPostScriptFileIsItsOwnOutputAndIsKept();
    void mergedEntriesAllNameTheOneFile();
    void clearRemovesWhatNobodyFetched();
    void theEndOfTheComponentRemovesWhatNobodyFetched();
    void outputsMayBeDeletedByTheDriver();
    void namesInAnyScriptAreKept();
};

void tst_contract_files::distilledFilesLieBesideTheirInput()
{
    Scene scene(component());
    const auto input = scene.document("drawing.ps");
    scene.distil({input});
    TRY_COMPLETED(scene.distilling, 1);
    QVERIFY(scene.distilling->success());
    const auto output = scene.distilling->outputs().value(0);
    QVERIFY2(contentOf(output).startsWith("%PDF-"), qPrintable(output));
    QCOMPARE(QFileInfo(output).path(), QFileInfo(input).path());
}

void tst_contract_files::theDistillerRemovesWhatWasPrintedForIt()
{
    Scene scene(component());
    scene.print({scene.document("letter.txt")});
    TRY_COMPLETED(scene.printing, 1);
    const auto printed = scene.printing->outputs();
    scene.distil(printed);
    TRY_COMPLETED(scene.distilling, 1);
    QVERIFY(!QFileInfo::exists(printed.first()));
    QVERIFY(QFileInfo::exists(scene.distilling->outputs().value(0)));
}

void tst_contract_files::aPostScriptFileIsItsOwnOutputAndIsKept()
{
    Scene scene(component());
    const auto file = scene.document("drawing.ps");
    scene.print({file});
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(scene.printing->outputs(), QStringList(file));
    scene.distil({file});
    TRY_COMPLETED(scene.distilling, 1);
    scene.end();
    QVERIFY(QFileInfo::exists(file));
}

void tst_contract_files::mergedEntriesAllNameTheOneFile()
{
    Scene scene(component());
    scene.distil({scene.document("a.ps"), scene.document("b.ps")});
    TRY_COMPLETED(scene.distilling, 1);
    const auto single = scene.distilling->outputs();
    scene.merge(single);
    TRY_COMPLETED(scene.merging, 1);
    QVERIFY(scene.merging->success());
    const auto merged = scene.merging->outputs();
    QCOMPARE(merged.size(), 2);
    QCOMPARE(merged.at(0), merged.at(1));
    QVERIFY(contentOf(merged.at(0)).startsWith("%PDF-"));
    QVERIFY(!QFileInfo::exists(single.at(0)) && !QFileInfo::exists(single.at(1)));
}

void tst_contract_files::clearRemovesWhatNobodyFetched()
{
    Scene scene(component());
    scene.print({scene.document("a.txt")});
    TRY_COMPLETED(scene.printing, 1);
    QCOMPARE(scene.leftovers().size(), 1);
    scene.lib->Documents().Clear();
    QTRY_COMPARE(scene.leftovers(), QStringList());
}

void tst_contract_files::theEndOfTheComponentRemovesWhatNobodyFetched()
{
    Scene scene(component());
    scene.print({scene.document("a.txt"), scene.document("b.txt")});
    TRY_COMPLETED(scene.printing, 1);
    scene.distil({scene.printing->outputs().value(0)});
    TRY_COMPLETED(scene.distilling, 1);
    QVERIFY(!scene.leftovers().isEmpty());
    scene.end();
    QCOMPARE(scene.leftovers(), QStringList());
}

void tst_contract_files::outputsMayBeDeletedByTheDriver()
{
    Scene scene(component());
    const auto file = scene.document("drawing.ps");
    for (int round = 1; round <= 2; ++round) {
        scene.distil({file});
        TRY_COMPLETED(scene.distilling, round);
        QVERIFY(scene.distilling->success());
        QVERIFY(QFile::remove(scene.distilling->outputs().value(0)));
    }
}

void tst_contract_files::namesInAnyScriptAreKept()
{
    Scene scene(component());
    scene.print({scene.document("Übersicht 東京 «%».txt")});
    TRY_COMPLETED(scene.printing, 1);
    QVERIFY(scene.printing->success());
    QCOMPARE(QFileInfo(scene.printing->outputs().value(0)).completeBaseName(),
             QStringLiteral("Übersicht 東京 «%»"));
    QVERIFY(QFileInfo::exists(scene.printing->outputs().value(0)));
}

QTEST_GUILESS_MAIN(tst_contract_files)
#include "tst_contract_files.moc"
