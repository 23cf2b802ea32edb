#include "unit/merge/MergeScene.h"

#include <QTest>

#include <set>

using namespace Quorlin;

namespace {

/// Two documents "a" and "b" of two pages, each prepared by the same function.
template <typename Prepare>
void addTwo(MergeScene &scene, const Prepare &prepare)
{
    for (const auto *name : {"a", "b"}) {
        PdfMaker maker(name, 2);
        prepare(maker);
        scene.add(maker, QString::fromLatin1(name));
    }
}

} // namespace

class TestMergeLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linksWithAPageLeadToThatPage();
    void linksWithAPageNumberLeadToThatPageOfTheirDocument();
    void goToActionsLeadToTheirPage();
    void equalNamesInNameTreesLeadIntoTheirOwnDocument();
    void equalNamesInDestsDictionariesLeadIntoTheirOwnDocument();
    void namesOfBothKindsInOneDocumentAreKeptApart();
    void nestedNextActionsAreRetargeted();
    void additionalActionsOfPagesAreRetargeted();
    void aSharedActionIsRetargetedOnce();
    void namesInUtf16StayTextWhenTheyMeet();
    void aDeadNameNeverLeadsIntoAnotherDocument();
    void linksToOtherFilesStayAsTheyAre();
    void linksToTheWebStayAsTheyAre();
    void aLinkToAPageOutsideThePageTreeLeadsNowhere();
    void theOpeningActionOfTheFirstDocumentIsKept();
    void manyNamesAreFoundInTheNameTree();
};

void TestMergeLinks::linksWithAPageLeadToThatPage()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.addLink(1, "/Dest [@2 /XYZ 5 6 0]");
        auto link = maker.addLink(2, "");
        link.replaceKey("/Dest", maker.object("[@1 /Fit]"));
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.annotation(1, 1)), QStringLiteral("a2"));
    QCOMPARE(scene.leadsTo(scene.annotation(2, 1)), QStringLiteral("a1"));
    QCOMPARE(scene.leadsTo(scene.annotation(3, 1)), QStringLiteral("b2"));
    QCOMPARE(scene.leadsTo(scene.annotation(4, 1)), QStringLiteral("b1"));
    QCOMPARE(scene.annotation(3, 1).getKey("/Dest").getArrayItem(2).getIntValue(), 5);
}

void TestMergeLinks::linksWithAPageNumberLeadToThatPageOfTheirDocument()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.addLink(1, "/Dest [1 /Fit]");
        maker.addLink(1, "/Dest [77 /Fit]");
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.annotation(1, 1)), QStringLiteral("a2"));
    QCOMPARE(scene.leadsTo(scene.annotation(3, 1)), QStringLiteral("b2"));
    QCOMPARE(scene.leadsTo(scene.annotation(3, 2)), QStringLiteral("lost"));
}

void TestMergeLinks::goToActionsLeadToTheirPage()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.addLink(1, "/A <</S /GoTo /D [@2 /Fit]>>");
        maker.addLink(1, "").replaceKey("/A", maker.object("<</S /GoTo /D [@1 /Fit]>>"));
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.annotation(1, 1)), QStringLiteral("a2"));
    QCOMPARE(scene.leadsTo(scene.annotation(3, 1)), QStringLiteral("b2"));
    QCOMPARE(scene.leadsTo(scene.annotation(3, 2)), QStringLiteral("b1"));
}

void TestMergeLinks::equalNamesInNameTreesLeadIntoTheirOwnDocument()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.set("/Names", "<</Dests <</Kids [<</Limits [(x) (y)] "
                            "/Names [(x) [@1 /Fit] (y) <</D [@2 /Fit]>>]>>]>>>>");
        maker.addLink(1, "/Dest (y)");
        maker.addLink(2, "/A <</S /GoTo /D (x)>>");
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.annotation(1, 1)), QStringLiteral("a2"));
    QCOMPARE(scene.leadsTo(scene.annotation(2, 1)), QStringLiteral("a1"));
    QCOMPARE(scene.leadsTo(scene.annotation(3, 1)), QStringLiteral("b2"));
    QCOMPARE(scene.leadsTo(scene.annotation(4, 1)), QStringLiteral("b1"));
    QCOMPARE(scene.annotation(1, 1).getKey("/Dest").getStringValue(), std::string("y"));
}

void TestMergeLinks::equalNamesInDestsDictionariesLeadIntoTheirOwnDocument()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.set("/Dests", "<</x [@1 /Fit] /y <</D [@2 /Fit]>>>>");
        maker.addLink(1, "/Dest /y");
        maker.addLink(2, "/A <</S /GoTo /D /x>>");
        maker.addLink(2, "/Dest (y)");
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.annotation(1, 1)), QStringLiteral("a2"));
    QCOMPARE(scene.leadsTo(scene.annotation(2, 1)), QStringLiteral("a1"));
    QCOMPARE(scene.leadsTo(scene.annotation(3, 1)), QStringLiteral("b2"));
    QCOMPARE(scene.leadsTo(scene.annotation(4, 1)), QStringLiteral("b1"));
    QCOMPARE(scene.leadsTo(scene.annotation(4, 2)), QStringLiteral("b2"));
}

void TestMergeLinks::namesOfBothKindsInOneDocumentAreKeptApart()
{
    PdfMaker a("a", 2);
    a.set("/Dests", "<</x [@1 /Fit]>>");
    a.set("/Names", "<</Dests <</Names [(x) [@2 /Fit]]>>>>");
    a.addLink(1, "/Dest /x");
    a.addLink(1, "/Dest (x)");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.annotation(1, 1)), QStringLiteral("a1"));
    QCOMPARE(scene.leadsTo(scene.annotation(1, 2)), QStringLiteral("a2"));
}

void TestMergeLinks::nestedNextActionsAreRetargeted()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.set("/Names", "<</Dests <</Names [(x) [@2 /Fit]]>>>>");
        maker.addLink(1, "/A <</S /URI /URI (http://x) /Next [<</S /GoTo /D (x)>> "
                         "<</S /Named /N /Print /Next <</S /GoTo /D [@1 /Fit]>>>>]>>");
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    auto next = scene.annotation(3, 1).getKey("/A").getKey("/Next");
    QCOMPARE(scene.leadsTo(next.getArrayItem(0)), QStringLiteral("b2"));
    QCOMPARE(scene.leadsTo(next.getArrayItem(1).getKey("/Next")), QStringLiteral("b1"));
}

void TestMergeLinks::additionalActionsOfPagesAreRetargeted()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.set("/Names", "<</Dests <</Names [(x) [@2 /Fit]]>>>>");
        maker.page(1).replaceKey("/AA", maker.parse("<</O <</S /GoTo /D (x)>>>>"));
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.page(3).getKey("/AA").getKey("/O")), QStringLiteral("b2"));
}

void TestMergeLinks::aSharedActionIsRetargetedOnce()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.set("/Names", "<</Dests <</Names [(x) [@1 /Fit] (x-2) [@2 /Fit]]>>>>");
        const auto action = maker.object("<</S /GoTo /D (x)>>");
        for (int i = 0; i < 3; ++i)
            maker.addLink(1, "").replaceKey("/A", action);
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    for (int i = 1; i <= 3; ++i)
        QCOMPARE(scene.leadsTo(scene.annotation(3, i)), QStringLiteral("b1"));
}

void TestMergeLinks::namesInUtf16StayTextWhenTheyMeet()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.set("/Names", "<</Dests <</Names [<feff5927> [@2 /Fit]]>>>>");
        maker.addLink(1, "/Dest <feff5927>");
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    auto name = scene.annotation(3, 1).getKey("/Dest");
    QVERIFY(QString::fromStdString(name.getUTF8Value()).startsWith(QChar(0x5927)));
    QCOMPARE(scene.leadsTo(scene.annotation(3, 1)), QStringLiteral("b2"));
}

void TestMergeLinks::aDeadNameNeverLeadsIntoAnotherDocument()
{
    PdfMaker a("a", 1), b("b", 1), c("c", 1);
    for (auto *maker : {&a, &c})
        maker->set("/Names", "<</Dests <</Names [(x) [@1 /Fit]]>>>>");
    b.addLink(1, "/Dest (x)");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    scene.add(c, QStringLiteral("c"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.annotation(2, 1)), QStringLiteral("undefined"));
}

void TestMergeLinks::linksToOtherFilesStayAsTheyAre()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.set("/Names", "<</Dests <</Names [(x) [@1 /Fit]]>>>>");
        maker.addLink(1, "/A <</S /GoToR /F (other.pdf) /D (x)>>");
        maker.addLink(1, "/A <</S /GoToR /F (other.pdf) /D [3 /Fit]>>");
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.annotation(3, 1).getKey("/A").getKey("/D").getStringValue(), std::string("x"));
    QCOMPARE(scene.annotation(3, 2).getKey("/A").getKey("/D").getArrayItem(0).getIntValue(), 3);
}

void TestMergeLinks::linksToTheWebStayAsTheyAre()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        maker.addLink(2, "/A <</S /URI /URI (https://example.org/?q=1)>>");
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.annotation(4, 1).getKey("/A").getKey("/URI").getStringValue(),
             std::string("https://example.org/?q=1"));
}

void TestMergeLinks::aLinkToAPageOutsideThePageTreeLeadsNowhere()
{
    PdfMaker a("a", 1);
    auto stray = a.object("<</Type /Page /MediaBox [0 0 9 9]>>");
    auto link = a.addLink(1, "");
    link.replaceKey("/Dest", a.parse("[" + stray.unparse() + " /Fit]"));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("a1"));
    QCOMPARE(scene.leadsTo(scene.annotation(1, 1)), QStringLiteral("lost"));
}

void TestMergeLinks::theOpeningActionOfTheFirstDocumentIsKept()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) { maker.set("/OpenAction", "[@2 /FitH 50]"); });
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.targetOf(scene.root().getKey("/OpenAction")), QStringLiteral("a2"));
}

void TestMergeLinks::manyNamesAreFoundInTheNameTree()
{
    MergeScene scene;
    addTwo(scene, [](PdfMaker &maker) {
        std::string names;
        for (int i = 1000; i < 1500; ++i)
            names += "(n" + std::to_string(i) + ") [@" + (i % 2 ? "1" : "2") + " /Fit] ";
        maker.set("/Names", "<</Dests <</Names [" + names + "]>>>>");
        for (int i = 1000; i < 1500; ++i)
            maker.addLink(1, "/Dest (n" + std::to_string(i) + ")");
    });
    QCOMPARE(scene.merge().reason, Reason::None);
    std::set<std::string> seen;
    for (int i = 1; i <= 500; ++i) {
        for (const int page : {1, 3}) {
            auto link = scene.annotation(page, i);
            const auto expected =
                QStringLiteral("%1%2").arg(page == 1 ? QStringLiteral("a") : QStringLiteral("b"),
                                           i % 2 ? QStringLiteral("2") : QStringLiteral("1"));
            QCOMPARE(scene.leadsTo(link), expected);
            seen.insert(link.getKey("/Dest").getStringValue());
        }
    }
    QCOMPARE(seen.size(), size_t(1000));
}

QTEST_GUILESS_MAIN(TestMergeLinks)
#include "tst_merge_links.moc"
