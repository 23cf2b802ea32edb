#include "unit/merge/MergeScene.h"
#include "unit/merge/RawPdf.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <ctime>

using namespace Quorlin;

namespace {

const auto None = QPDFObjectHandle::newNull();

QByteArray number(int value)
{
    return QByteArray::number(value);
}

/// Seconds of the processor, far more than any of these documents needs; a merge that hangs goes
/// over it. What else the machine does meanwhile does not count.
constexpr double Patience = 30;

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

class TestMergeHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_start = processorSeconds(); }
    void cleanup() { QVERIFY2(processorSeconds() - m_start < Patience, "it took too long"); }

    void failuresNameTheFile_data();
    void failuresNameTheFile();
    void aDocumentWithAPasswordIsProtected();
    void aDocumentThatMayNotBeTakenApartIsProtected();
    void aDocumentCutInHalfIsDamaged();
    void aFailureLeavesNothingBehind();
    void aFailureKeepsTheOlderResult();
    void anOutputFolderThatIsMissingIsReported();
    void outlineLoopsEnd();
    void hundredThousandBookmarksAreKept();
    void bookmarksNestedTenThousandDeepAreKept();
    void pageTreeLoopsEnd();
    void pageTreesNestedTenThousandDeepAreRead();
    void missingPagesAreLeftOut();
    void aDocumentWithoutPagesIsReported();
    void pagesWithoutTypeAreFound();
    void aChainOfHundredThousandObjectsIsCopied();
    void aChainOfTenThousandStreamsIsCopied();
    void deeplyNestedArraysDoNotOverflow();
    void nameTreeLoopsEnd();
    void labelTreeLoopsEnd();
    void streamsThatReferToEachOtherAreCopied();
    void entriesOfAWrongTypeAreLeftOut();
    void aWrongStreamLengthIsRepaired();
    void anActionThatFollowsItselfIsCopied();

private:
    double m_start = 0;
};

void TestMergeHostile::failuresNameTheFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Reason>("reason");
    QTest::newRow("text") << QByteArray("Dear Sir or Madam,\n") << Reason::Damaged;
    QTest::newRow("nothing") << QByteArray() << Reason::Empty;
    QTest::newRow("header only") << QByteArray("%PDF-1.4\n") << Reason::Damaged;
    QTest::newRow("zeros") << QByteArray(100000, '\0') << Reason::Damaged;
    QTest::newRow("no catalog") << RawPdf::fileOf({"(no catalog)"}) << Reason::Damaged;
}

void TestMergeHostile::failuresNameTheFile()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const Reason, reason);
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.addBytes(bytes, QStringLiteral("bad"));
    const auto outcome = scene.merge();
    QCOMPARE(outcome.reason, reason);
    QVERIFY2(outcome.text.contains(scene.path(QStringLiteral("bad.pdf"))),
             qPrintable(outcome.text));
    QCOMPARE(outcome.values.value(QLatin1String("index")).toInt(), 2);
}

void TestMergeHostile::aDocumentWithAPasswordIsProtected()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    a.saveEncrypted(scene.path(QStringLiteral("locked.pdf")), "secret");
    scene.addPath(scene.path(QStringLiteral("locked.pdf")));
    const auto outcome = scene.merge();
    QCOMPARE(outcome.reason, Reason::Protected);
    QVERIFY(outcome.text.contains(QLatin1String("locked.pdf")));
    QCOMPARE(outcome.values.value(QLatin1String("index")).toInt(), 1);
}

void TestMergeHostile::aDocumentThatMayNotBeTakenApartIsProtected()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    a.saveEncrypted(scene.path(QStringLiteral("kept.pdf")), "");
    scene.addPath(scene.path(QStringLiteral("kept.pdf")));
    QCOMPARE(scene.merge().reason, Reason::Protected);
}

void TestMergeHostile::aDocumentCutInHalfIsDamaged()
{
    PdfMaker a("a", 9);
    MergeScene scene;
    a.save(scene.path(QStringLiteral("whole.pdf")));
    QFile file(scene.path(QStringLiteral("whole.pdf")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    scene.addBytes(file.read(file.size() / 2), QStringLiteral("half"));
    QCOMPARE(scene.merge().reason, Reason::Damaged);
}

void TestMergeHostile::aFailureLeavesNothingBehind()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.addPath(scene.path(QStringLiteral("missing.pdf")));
    QCOMPARE(scene.merge().reason, Reason::NotFound);
    QCOMPARE(scene.files(), QStringList{QStringLiteral("a.pdf")});
}

void TestMergeHostile::aFailureKeepsTheOlderResult()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    scene.addPath(QDir::tempPath());
    QCOMPARE(scene.merge().reason, Reason::NotRegular);
    QCOMPARE(scene.pageNames(), QStringLiteral("a1"));
}

void TestMergeHostile::anOutputFolderThatIsMissingIsReported()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    auto request = scene.request(true);
    request.insert(QStringLiteral("output"), scene.path(QStringLiteral("no/such/folder.pdf")));
    const auto outcome = MergeRequest(request, [](int) {}).run();
    QCOMPARE(outcome.reason, Reason::NotAllowed);
    QVERIFY(outcome.text.contains(QLatin1String("no/such/folder.pdf")));
}

void TestMergeHostile::outlineLoopsEnd()
{
    PdfMaker a("a", 1);
    auto one = a.addBookmark(None, "One", "/Dest [@1 /Fit]");
    auto two = a.addBookmark(None, "Two", "/Dest [@1 /Fit]");
    two.replaceKey("/Next", one);
    two.replaceKey("/First", one);
    one.replaceKey("/First", one);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.bookmarks(), QStringLiteral("a>a1{One>a1 Two>a1}"));
}

void TestMergeHostile::hundredThousandBookmarksAreKept()
{
    constexpr int Count = 100000;
    std::vector<QByteArray> objects{
        "<</Type/Catalog/Pages 2 0 R/Outlines 4 0 R>>", "<</Type/Pages/Count 1/Kids[3 0 R]>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>", "<</First 5 0 R>>"};
    for (int i = 0; i < Count; ++i)
        objects.push_back("<</Title(t)/Dest[3 0 R/Fit]/Next " + number(6 + i) + " 0 R>>");
    MergeScene scene;
    scene.addBytes(RawPdf::fileOf(objects), QStringLiteral("many"));
    QCOMPARE(scene.merge(false).reason, Reason::None);
    auto outlines = scene.root().getKey("/Outlines");
    int found = 0;
    for (auto item = outlines.getKey("/First"); item.isDictionary(); item = item.getKey("/Next"))
        ++found;
    QCOMPARE(found, Count);
    QCOMPARE(outlines.getKey("/Count").getIntValue(), Count);
}

void TestMergeHostile::bookmarksNestedTenThousandDeepAreKept()
{
    constexpr int Depth = 10000;
    std::vector<QByteArray> objects{
        "<</Type/Catalog/Pages 2 0 R/Outlines 4 0 R>>", "<</Type/Pages/Count 1/Kids[3 0 R]>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>", "<</First 5 0 R>>"};
    for (int i = 0; i < Depth; ++i)
        objects.push_back("<</Title(t)/Count 1/First " + number(6 + i) + " 0 R>>");
    MergeScene scene;
    scene.addBytes(RawPdf::fileOf(objects), QStringLiteral("deep"));
    QCOMPARE(scene.merge(false).reason, Reason::None);
    int found = 0;
    auto item = scene.root().getKey("/Outlines").getKey("/First");
    for (; item.isDictionary(); item = item.getKey("/First"))
        ++found;
    QCOMPARE(found, Depth);
}

void TestMergeHostile::pageTreeLoopsEnd()
{
    MergeScene scene;
    scene.addBytes(RawPdf::fileOf({"<</Type/Catalog/Pages 2 0 R>>",
                                   "<</Type/Pages/Count 3/Kids[3 0 R 2 0 R 4 0 R]>>",
                                   "<</Type/Page/MediaBox[0 0 9 9]/Contents 5 0 R>>",
                                   "<</Type/Pages/Kids[2 0 R 4 0 R]>>", RawPdf::stream("(x1)")}),
                   QStringLiteral("loop"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("x1"));
}

void TestMergeHostile::pageTreesNestedTenThousandDeepAreRead()
{
    constexpr int Depth = 10000;
    std::vector<QByteArray> objects{"<</Type/Catalog/Pages 2 0 R>>"};
    for (int i = 0; i < Depth; ++i)
        objects.push_back("<</Type/Pages/Count 1/MediaBox[0 0 9 9]/Kids[" + number(3 + i) +
                          " 0 R]>>");
    objects.push_back("<</Type/Page/Parent 2 0 R/Contents " + number(Depth + 3) + " 0 R>>");
    objects.push_back(RawPdf::stream("(x1)"));
    MergeScene scene;
    scene.addBytes(RawPdf::fileOf(objects), QStringLiteral("deep"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("x1"));
}

void TestMergeHostile::missingPagesAreLeftOut()
{
    MergeScene scene;
    scene.addBytes(
        RawPdf::fileOf({"<</Type/Catalog/Pages 2 0 R>>",
                        "<</Type/Pages/Count 4/Kids[null 9 0 R 3 0 R (page)]>>",
                        "<</Type/Page/MediaBox[0 0 9 9]/Contents 4 0 R>>", RawPdf::stream("(x1)")}),
        QStringLiteral("gaps"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("x1"));
}

void TestMergeHostile::aDocumentWithoutPagesIsReported()
{
    MergeScene scene;
    scene.addBytes(
        RawPdf::fileOf({"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Count 0/Kids[]>>"}),
        QStringLiteral("none"));
    const auto outcome = scene.merge();
    QCOMPARE(outcome.reason, Reason::NothingPrinted);
    QVERIFY(outcome.text.contains(QLatin1String("none.pdf")));
}

void TestMergeHostile::pagesWithoutTypeAreFound()
{
    MergeScene scene;
    scene.addBytes(
        RawPdf::fileOf({"<</Type/Catalog/Pages 2 0 R>>", "<</Count 2/Kids[3 0 R 4 0 R]>>",
                        "<</Parent 2 0 R/MediaBox[0 0 9 9]/Contents 5 0 R>>",
                        "<</Parent 2 0 R/MediaBox[0 0 9 9]/Contents 6 0 R>>",
                        RawPdf::stream("(x1)"), RawPdf::stream("(x2)")}),
        QStringLiteral("plain"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("x1 x2"));
}

void TestMergeHostile::aChainOfHundredThousandObjectsIsCopied()
{
    constexpr int Length = 100000;
    std::vector<QByteArray> objects{"<</Type/Catalog/Pages 2 0 R>>",
                                    "<</Type/Pages/Count 1/Kids[3 0 R]>>",
                                    "<</Type/Page/MediaBox[0 0 9 9]/PieceInfo 4 0 R>>"};
    for (int i = 0; i < Length; ++i)
        objects.push_back("<</Chain " + number(5 + i) + " 0 R>>");
    MergeScene scene;
    scene.addBytes(RawPdf::fileOf(objects), QStringLiteral("chain"));
    QCOMPARE(scene.merge().reason, Reason::None);
    int found = 0;
    auto item = scene.page(1).getKey("/PieceInfo");
    for (; item.isDictionary(); item = item.getKey("/Chain"))
        ++found;
    QCOMPARE(found, Length);
}

void TestMergeHostile::aChainOfTenThousandStreamsIsCopied()
{
    constexpr int Length = 10000;
    std::vector<QByteArray> objects{
        "<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Count 1/Kids[3 0 R]>>",
        "<</Type/Page/MediaBox[0 0 9 9]/Resources<</XObject<</X 4 0 R>>>>>>"};
    for (int i = 0; i < Length; ++i)
        objects.push_back("<</Length 1/Next " + number(5 + i) + " 0 R>>\nstream\nx\nendstream");
    MergeScene scene;
    scene.addBytes(RawPdf::fileOf(objects), QStringLiteral("chain"));
    QCOMPARE(scene.merge().reason, Reason::None);
    int found = 0;
    auto item = scene.page(1).getKey("/Resources").getKey("/XObject").getKey("/X");
    for (; item.isStream(); item = item.getDict().getKey("/Next"))
        ++found;
    QCOMPARE(found, Length);
}

void TestMergeHostile::deeplyNestedArraysDoNotOverflow()
{
    MergeScene scene;
    scene.addBytes(
        RawPdf::fileOf({"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Count 1/Kids[3 0 R]>>",
                        "<</Type/Page/MediaBox[0 0 9 9]/Contents 5 0 R/PieceInfo 4 0 R>>",
                        QByteArray(200000, '[') + QByteArray(200000, ']'), RawPdf::stream("(x1)")}),
        QStringLiteral("nested"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("x1"));
}

void TestMergeHostile::nameTreeLoopsEnd()
{
    PdfMaker a("a", 2);
    auto node = a.object("<</Names [(x) [@2 /Fit] (odd)] >>");
    node.replaceKey("/Kids", a.parse("[" + node.unparse() + " 7 " + node.unparse() + "]"));
    a.set("/Names", "<</Dests " + node.unparse() + ">>");
    a.addLink(1, "/Dest (x)");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.leadsTo(scene.annotation(1, 1)), QStringLiteral("a2"));
}

void TestMergeHostile::labelTreeLoopsEnd()
{
    PdfMaker a("a", 2);
    auto node = a.object("<</Nums [0 <</S /r>> (x) 5 -3 <</S /D>> 1]>>");
    node.replaceKey("/Kids", a.parse("[" + node.unparse() + "]"));
    a.root().replaceKey("/PageLabels", node);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.root().getKey("/PageLabels").getKey("/Nums").getArrayNItems(), 2);
}

void TestMergeHostile::streamsThatReferToEachOtherAreCopied()
{
    MergeScene scene;
    scene.addBytes(
        RawPdf::fileOf({"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Count 1/Kids[3 0 R]>>",
                        "<</Type/Page/MediaBox[0 0 9 9]/Resources<</XObject<</X 4 0 R>>>>>>",
                        "<</Length 1/Other 5 0 R>>\nstream\na\nendstream",
                        "<</Length 1/Other 4 0 R/Self 5 0 R>>\nstream\nb\nendstream"}),
        QStringLiteral("ring"));
    QCOMPARE(scene.merge().reason, Reason::None);
    auto first = scene.page(1).getKey("/Resources").getKey("/XObject").getKey("/X");
    auto second = first.getDict().getKey("/Other");
    QVERIFY(second.getDict().getKey("/Other").getObjGen() == first.getObjGen());
    QVERIFY(second.getDict().getKey("/Self").getObjGen() == second.getObjGen());
}

void TestMergeHostile::entriesOfAWrongTypeAreLeftOut()
{
    PdfMaker a("a", 1);
    for (const auto *key : {"/Outlines", "/Names", "/Dests", "/PageLabels", "/AcroForm",
                            "/OCProperties", "/Threads", "/Metadata", "/OpenAction", "/PageMode"})
        a.set(key, "[(wrong) 1]");
    a.pdf().getTrailer().replaceKey("/Info", a.parse("[1]"));
    a.page(1).replaceKey("/Annots", a.parse("(wrong)"));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.bookmarks(), QStringLiteral("a>a1"));
    QVERIFY(!scene.root().hasKey("/AcroForm"));
    QVERIFY(!scene.root().hasKey("/PageLabels"));
}

void TestMergeHostile::aWrongStreamLengthIsRepaired()
{
    MergeScene scene;
    scene.addBytes(
        RawPdf::fileOf({"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Count 1/Kids[3 0 R]>>",
                        "<</Type/Page/MediaBox[0 0 9 9]/Contents 4 0 R>>",
                        "<</Length 999999>>\nstream\n(x1) Tj\nendstream"}),
        QStringLiteral("length"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("x1"));
}

void TestMergeHostile::anActionThatFollowsItselfIsCopied()
{
    PdfMaker a("a", 1);
    auto action = a.object("<</S /GoTo /D [@1 /Fit]>>");
    action.replaceKey("/Next", action);
    a.addLink(1, "").replaceKey("/A", action);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    auto copied = scene.annotation(1, 1).getKey("/A");
    QCOMPARE(scene.leadsTo(copied), QStringLiteral("a1"));
    QVERIFY(copied.getKey("/Next").getObjGen() == copied.getObjGen());
}

QTEST_GUILESS_MAIN(TestMergeHostile)
#include "tst_merge_hostile.moc"
