#include "unit/merge/MergeScene.h"

#include <QJsonArray>
#include <QTest>

using namespace Quorlin;

namespace {

const auto None = QPDFObjectHandle::newNull();

/// Two chapters, the first open with a closed section that has two parts.
void addChapters(PdfMaker &maker)
{
    auto first = maker.addBookmark(None, "One", "/Dest [@1 /Fit] /Count 1");
    auto section = maker.addBookmark(first, "Section", "/Dest [@2 /Fit] /Count -2");
    maker.addBookmark(section, "Part x", "/Dest [@2 /Fit]");
    maker.addBookmark(section, "Part y", "/A <</S /GoTo /D [@1 /Fit]>>");
    maker.addBookmark(None, "Two", "/Dest [@2 /XYZ 1 2 3]");
}

} // namespace

class TestMergeBookmarks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyDocumentGetsOneEntryWithItsOwnBookmarksBeneath();
    void withoutEntriesTheDocumentsBookmarksFollowOneAnother();
    void withoutAnyBookmarksThereAreNone();
    void bookmarkCountsTellHowManyEntriesShow();
    void coloursAndStylesAreKept();
    void titlesBeyondAsciiAreKept();
    void namedTargetsOfBookmarksAreKept();
    void actionsThatAreObjectsOfTheirOwnAreKept();
    void aDocumentsEntryLeadsToTheTopOfItsFirstPage();
    void theEntryOfATurnedPageLeadsToTheCornerThatShowsUpperLeft();
    void theBookmarksPanelIsShown();
    void aTitleThatIsMissingIsTakenFromTheFileName();
};

void TestMergeBookmarks::everyDocumentGetsOneEntryWithItsOwnBookmarksBeneath()
{
    PdfMaker a("a", 2), b("b", 1), c("c", 2);
    addChapters(a);
    addChapters(c);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    scene.add(c, QStringLiteral("c"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.bookmarks(),
             QStringLiteral("a>a1{+One>a1{Section>a2{Part x>a2 Part y>a1}} Two>a2} b>b1 "
                            "c>c1{+One>c1{Section>c2{Part x>c2 Part y>c1}} Two>c2}"));
}

void TestMergeBookmarks::withoutEntriesTheDocumentsBookmarksFollowOneAnother()
{
    PdfMaker a("a", 2), b("b", 1), c("c", 2);
    addChapters(a);
    addChapters(c);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    scene.add(c, QStringLiteral("c"));
    QCOMPARE(scene.merge(false).reason, Reason::None);
    QCOMPARE(scene.bookmarks(), QStringLiteral("+One>a1{Section>a2{Part x>a2 Part y>a1}} Two>a2 "
                                               "+One>c1{Section>c2{Part x>c2 Part y>c1}} Two>c2"));
}

void TestMergeBookmarks::withoutAnyBookmarksThereAreNone()
{
    PdfMaker a("a", 1), b("b", 1);
    a.set("/PageMode", "/UseOutlines");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    QCOMPARE(scene.merge(false).reason, Reason::None);
    QVERIFY(!scene.root().hasKey("/Outlines"));
    QVERIFY(!scene.root().hasKey("/PageMode"));
}

void TestMergeBookmarks::bookmarkCountsTellHowManyEntriesShow()
{
    PdfMaker a("a", 2);
    addChapters(a);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge(false).reason, Reason::None);
    auto outlines = scene.root().getKey("/Outlines");
    auto one = outlines.getKey("/First");
    QCOMPARE(outlines.getKey("/Count").getIntValue(), 3);
    QCOMPARE(one.getKey("/Count").getIntValue(), 1);
    QCOMPARE(one.getKey("/First").getKey("/Count").getIntValue(), -2);
    QVERIFY(!outlines.getKey("/Last").hasKey("/Count"));
    QVERIFY(outlines.getKey("/Last").getKey("/Prev").getObjGen() == one.getObjGen());
    QVERIFY(one.getKey("/Parent").getObjGen() == outlines.getObjGen());
}

void TestMergeBookmarks::coloursAndStylesAreKept()
{
    PdfMaker a("a", 1);
    a.addBookmark(None, "Red", "/Dest [@1 /Fit] /C [1 0 0] /F 3");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge(false).reason, Reason::None);
    auto item = scene.root().getKey("/Outlines").getKey("/First");
    QCOMPARE(item.getKey("/C").unparse(), std::string("[ 1 0 0 ]"));
    QCOMPARE(item.getKey("/F").getIntValue(), 3);
}

void TestMergeBookmarks::titlesBeyondAsciiAreKept()
{
    PdfMaker a("a", 1);
    a.addBookmark(None, "Größe – 大きさ", "/Dest [@1 /Fit]");
    MergeScene scene;
    scene.add(a, QStringLiteral("Übersicht 概要"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.bookmarks(), QStringLiteral("Übersicht 概要>a1{Größe – 大きさ>a1}"));
}

void TestMergeBookmarks::namedTargetsOfBookmarksAreKept()
{
    MergeScene scene;
    for (const auto *name : {"a", "b"}) {
        PdfMaker maker(name, 2);
        maker.set("/Names", "<</Dests <</Names [(end) [@2 /Fit]]>>>>");
        maker.addBookmark(None, "Direct", "/Dest (end)");
        maker.addBookmark(None, "Action", "/A <</S /GoTo /D (end)>>");
        scene.add(maker, QString::fromLatin1(name));
    }
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.bookmarks(),
             QStringLiteral("a>a1{Direct>a2 Action>a2} b>b1{Direct>b2 Action>b2}"));
}

void TestMergeBookmarks::actionsThatAreObjectsOfTheirOwnAreKept()
{
    PdfMaker a("a", 2);
    auto action = a.object("<</S /GoTo /D [@2 /Fit]>>");
    a.addBookmark(None, "Far", "/A " + action.unparse());
    a.addBookmark(None, "Out", "/A " + a.object("<</S /URI /URI (http://x)>>").unparse());
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge(false).reason, Reason::None);
    QCOMPARE(scene.bookmarks(), QStringLiteral("Far>a2 Out>none"));
    auto last = scene.root().getKey("/Outlines").getKey("/Last");
    QCOMPARE(last.getKey("/A").getKey("/URI").getStringValue(), std::string("http://x"));
}

void TestMergeBookmarks::aDocumentsEntryLeadsToTheTopOfItsFirstPage()
{
    PdfMaker a("a", 1);
    a.page(1).replaceKey("/CropBox", QPDFObjectHandle::parse("[10 20 110 220]"));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    auto target = scene.root().getKey("/Outlines").getKey("/First").getKey("/Dest");
    QCOMPARE(target.getArrayItem(1).getName(), std::string("/XYZ"));
    QCOMPARE(target.getArrayItem(2).getNumericValue(), 10.0);
    QCOMPARE(target.getArrayItem(3).getNumericValue(), 220.0);
    QVERIFY(target.getArrayItem(4).isNull());
}

void TestMergeBookmarks::theEntryOfATurnedPageLeadsToTheCornerThatShowsUpperLeft()
{
    PdfMaker a("a", 1);
    a.page(1).replaceKey("/Rotate", QPDFObjectHandle::newInteger(90));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    auto target = scene.root().getKey("/Outlines").getKey("/First").getKey("/Dest");
    QCOMPARE(target.getArrayItem(2).getNumericValue(), 0.0);
    QCOMPARE(target.getArrayItem(3).getNumericValue(), 0.0);
}

void TestMergeBookmarks::theBookmarksPanelIsShown()
{
    PdfMaker a("a", 1);
    a.set("/PageMode", "/FullScreen");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.root().getKey("/PageMode").getName(), std::string("/UseOutlines"));
}

void TestMergeBookmarks::aTitleThatIsMissingIsTakenFromTheFileName()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("my.report"));
    auto request = scene.request(true);
    const QJsonObject input{{QStringLiteral("file"), scene.path(QStringLiteral("my.report.pdf"))}};
    request.insert(QStringLiteral("inputs"), QJsonArray{input});
    QCOMPARE(MergeRequest(request, [](int) {}).run().reason, Reason::None);
    QCOMPARE(scene.bookmarks(), QStringLiteral("my.report>a1"));
}

QTEST_GUILESS_MAIN(TestMergeBookmarks)
#include "tst_merge_bookmarks.moc"
