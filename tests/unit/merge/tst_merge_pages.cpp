#include "unit/merge/MergeScene.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <qpdf/Buffer.hh>
#include <qpdf/QPDFPageLabelDocumentHelper.hh>

using namespace Quorlin;

namespace {

std::string contentOf(QPDFObjectHandle stream)
{
    const auto data = stream.getStreamData();
    return {reinterpret_cast<const char *>(data->getBuffer()), data->getSize()};
}

/// Bytes that do not compress, the same each time.
std::string noise(size_t size)
{
    std::string bytes;
    unsigned state = 1;
    for (size_t i = 0; i < size; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24);
    }
    return bytes;
}

QString labelOf(MergeScene &scene, int page)
{
    QPDFPageLabelDocumentHelper labels(scene.result());
    auto label = labels.getLabelForPage(page - 1);
    return label.isNull() ? QStringLiteral("none")
                          : QString::fromStdString(label.getKey("/S").getName() +
                                                   label.getKey("/St").unparse());
}

} // namespace

class TestMergePages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allPagesFollowInOrder();
    void theSameFileMayBeMergedTwice();
    void attributesOfThePageTreeAreInherited();
    void aPagesOwnAttributesWinOverInheritedOnes();
    void pagesWithoutSizeGetAnOrdinaryOne();
    void pageLabelsContinue();
    void labelsAreNotInventedWhenNobodyHasThem();
    void titleAndAuthorOfTheFirstDocumentAreKept();
    void titleFromMetadataIsKept();
    void metadataAndDocumentInformationAgree();
    void theStructureTreeIsLeftOut();
    void layersOfAllDocumentsAreKeptWithTheirState();
    void attachmentsOfAllDocumentsAreKept();
    void articleThreadsAreKept();
    void equalFontsAreKeptOnce();
    void equalPicturesAreKeptOnce();
    void differentStreamsOfEqualLengthStayDifferent();
    void compressedStreamsAreTakenAsTheyAre();
    void theHighestVersionIsWritten();
};

void TestMergePages::allPagesFollowInOrder()
{
    PdfMaker a("a", 3), b("b", 1), c("c", 2);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    scene.add(c, QStringLiteral("c"));
    const auto outcome = scene.merge();
    QCOMPARE(outcome.reason, Reason::None);
    QCOMPARE(outcome.values.value(QLatin1String("pages")).toInt(), 6);
    QCOMPARE(scene.pageNames(), QStringLiteral("a1 a2 a3 b1 c1 c2"));
}

void TestMergePages::theSameFileMayBeMergedTwice()
{
    PdfMaker a("a", 2);
    a.addLink(1, "/Dest [@2 /Fit]");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.addPath(scene.path(QStringLiteral("a.pdf")));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("a1 a2 a1 a2"));
    const auto target = scene.annotation(3, 1).getKey("/Dest").getArrayItem(0);
    QVERIFY(target.getObjGen() == scene.page(4).getObjGen());
}

void TestMergePages::attributesOfThePageTreeAreInherited()
{
    PdfMaker a("a", 2);
    auto pages = a.root().getKey("/Pages");
    pages.replaceKey("/MediaBox", QPDFObjectHandle::parse("[0 0 111 222]"));
    pages.replaceKey("/CropBox", QPDFObjectHandle::parse("[1 1 99 99]"));
    pages.replaceKey("/Rotate", QPDFObjectHandle::newInteger(270));
    pages.replaceKey("/Resources", a.page(2).getKey("/Resources"));
    for (const auto *key : {"/MediaBox", "/Resources"})
        a.page(2).removeKey(key);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    auto page = scene.page(2);
    QCOMPARE(page.getKey("/MediaBox").getArrayAsRectangle().urx, 111.0);
    QCOMPARE(page.getKey("/CropBox").getArrayAsRectangle().urx, 99.0);
    QCOMPARE(page.getKey("/Rotate").getIntValue(), 270);
    QVERIFY(page.getKey("/Resources").getKey("/Font").hasKey("/F1"));
}

void TestMergePages::aPagesOwnAttributesWinOverInheritedOnes()
{
    PdfMaker a("a", 1);
    a.root().getKey("/Pages").replaceKey("/MediaBox", QPDFObjectHandle::parse("[0 0 1 1]"));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.page(1).getKey("/MediaBox").getArrayAsRectangle().urx, 200.0);
}

void TestMergePages::pagesWithoutSizeGetAnOrdinaryOne()
{
    PdfMaker a("a", 1);
    a.page(1).removeKey("/MediaBox");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QVERIFY(scene.page(1).getKey("/MediaBox").isRectangle());
}

void TestMergePages::pageLabelsContinue()
{
    PdfMaker a("a", 3), b("b", 2), c("c", 2);
    a.set("/PageLabels", "<</Nums [0 <</S /r>> 2 <</S /D /St 1>>]>>");
    c.set("/PageLabels", "<</Kids [<</Nums [0 <</S /A /St 5>> 9 <</S /R>>]>>]>>");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    scene.add(c, QStringLiteral("c"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(labelOf(scene, 2), QStringLiteral("/r2"));
    QCOMPARE(labelOf(scene, 3), QStringLiteral("/D1"));
    QCOMPARE(labelOf(scene, 5), QStringLiteral("/D5"));
    QCOMPARE(labelOf(scene, 6), QStringLiteral("/A5"));
    QCOMPARE(labelOf(scene, 7), QStringLiteral("/A6"));
}

void TestMergePages::labelsAreNotInventedWhenNobodyHasThem()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QVERIFY(!scene.root().hasKey("/PageLabels"));
}

void TestMergePages::titleAndAuthorOfTheFirstDocumentAreKept()
{
    PdfMaker a("a", 1), b("b", 1);
    a.pdf().getTrailer().replaceKey("/Info", a.object("<</Author (Ann) /Company (Us)>>"));
    a.pdf().getTrailer().getKey("/Info").replaceKey(
        "/Title", QPDFObjectHandle::newUnicodeString("Jahr – 年"));
    b.pdf().getTrailer().replaceKey("/Info", b.object("<</Title (Other) /Author (Bob)>>"));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    QCOMPARE(scene.merge().reason, Reason::None);
    auto information = scene.result().getTrailer().getKey("/Info");
    QCOMPARE(information.getKey("/Title").getUTF8Value(), std::string("Jahr – 年"));
    QCOMPARE(information.getKey("/Author").getUTF8Value(), std::string("Ann"));
    QCOMPARE(information.getKey("/Company").getUTF8Value(), std::string("Us"));
}

void TestMergePages::titleFromMetadataIsKept()
{
    PdfMaker a("a", 1);
    auto metadata = QPDFObjectHandle::newStream(
        &a.pdf(), "<x:xmpmeta xmlns:x='adobe:ns:meta/'><r:RDF "
                  "xmlns:r='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><r:Description "
                  "xmlns:d='http://purl.org/dc/elements/1.1/'><d:title><r:Alt><r:li>Von hier"
                  "</r:li></r:Alt></d:title></r:Description></r:RDF></x:xmpmeta>");
    a.root().replaceKey("/Metadata", metadata);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.result().getTrailer().getKey("/Info").getKey("/Title").getUTF8Value(),
             std::string("Von hier"));
}

void TestMergePages::metadataAndDocumentInformationAgree()
{
    PdfMaker a("a", 1);
    a.pdf().getTrailer().replaceKey("/Info", a.object("<</Title (A < B & C) /Author (Ann) "
                                                      "/CreationDate (D:20240131120000+01'00')>>"));
    a.root().replaceKey("/Metadata", QPDFObjectHandle::newStream(&a.pdf(), "<pdfaid>1</pdfaid>"));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    const auto xml = QString::fromStdString(contentOf(scene.root().getKey("/Metadata")));
    QVERIFY2(xml.contains(QLatin1String("A &lt; B &amp; C</rdf:li>")), qPrintable(xml));
    QVERIFY(xml.contains(QLatin1String("<rdf:li>Ann</rdf:li>")));
    QVERIFY(xml.contains(QLatin1String("<xmp:CreateDate>2024-01-31T12:00:00+01:00<")));
    QVERIFY(!xml.contains(QLatin1String("pdfaid")));
}

void TestMergePages::theStructureTreeIsLeftOut()
{
    PdfMaker a("a", 1);
    auto tree = a.object("<</Type /StructTreeRoot>>");
    tree.replaceKey("/K", a.object("<</Type /StructElem /S /P /Pg @1 /P " + tree.unparse() + ">>"));
    a.root().replaceKey("/StructTreeRoot", tree);
    a.set("/MarkInfo", "<</Marked true>>");
    a.page(1).replaceKey("/StructParents", QPDFObjectHandle::newInteger(0));
    a.addLink(1, "/Dest [@1 /Fit]");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QVERIFY(!scene.root().hasKey("/StructTreeRoot"));
    QVERIFY(!scene.root().hasKey("/MarkInfo"));
    QVERIFY(!scene.page(1).hasKey("/StructParents"));
    QVERIFY(!scene.annotation(1, 1).hasKey("/StructParent"));
    for (auto object : scene.result().getAllObjects())
        QVERIFY(!object.isDictionaryOfType("/StructElem"));
}

void TestMergePages::layersOfAllDocumentsAreKeptWithTheirState()
{
    MergeScene scene;
    for (const auto *name : {"a", "b"}) {
        PdfMaker maker(name, 1);
        const auto shown = maker.object("<</Type /OCG /Name (Shown)>>").unparse() + " ";
        const auto hidden = maker.object("<</Type /OCG /Name (Hidden)>>").unparse() + " ";
        const bool isFirst = std::string(name) == "a";
        maker.set("/OCProperties",
                  "<</OCGs [" + shown + hidden + "] /D <</Order [" + shown + hidden + "] " +
                      (isFirst ? "/OFF [" + hidden + "]" : "/BaseState /OFF /ON [" + shown + "]") +
                      ">>>>");
        maker.page(1)
            .getKey("/Resources")
            .replaceKey("/Properties", maker.parse("<</L0 " + hidden + ">>"));
        scene.add(maker, QString::fromLatin1(name));
    }
    QCOMPARE(scene.merge().reason, Reason::None);
    auto layers = scene.root().getKey("/OCProperties");
    QCOMPARE(layers.getKey("/OCGs").getArrayNItems(), 4);
    QCOMPARE(layers.getKey("/D").getKey("/Order").getArrayNItems(), 4);
    auto off = layers.getKey("/D").getKey("/OFF");
    QCOMPARE(off.getArrayNItems(), 2);
    for (int i = 0; i < 2; ++i) {
        const auto used =
            scene.page(i + 1).getKey("/Resources").getKey("/Properties").getKey("/L0");
        QVERIFY(off.getArrayItem(i).getObjGen() == used.getObjGen());
    }
}

void TestMergePages::attachmentsOfAllDocumentsAreKept()
{
    MergeScene scene;
    for (const auto *name : {"a", "b"}) {
        PdfMaker maker(name, 1);
        auto stream = QPDFObjectHandle::newStream(&maker.pdf(), std::string("of ") + name);
        maker.set("/Names", "<</EmbeddedFiles <</Names [(note) <</Type /Filespec /F (n) /EF <</F " +
                                stream.unparse() + ">>>>]>>>>");
        scene.add(maker, QString::fromLatin1(name));
    }
    QCOMPARE(scene.merge().reason, Reason::None);
    auto files = scene.root().getKey("/Names").getKey("/EmbeddedFiles").getKey("/Kids");
    auto names = files.getArrayItem(0).getKey("/Names");
    QCOMPARE(names.getArrayNItems(), 4);
    QVERIFY(names.getArrayItem(0).getStringValue() != names.getArrayItem(2).getStringValue());
    QCOMPARE(contentOf(names.getArrayItem(1).getKey("/EF").getKey("/F")), std::string("of a"));
    QCOMPARE(contentOf(names.getArrayItem(3).getKey("/EF").getKey("/F")), std::string("of b"));
}

void TestMergePages::articleThreadsAreKept()
{
    PdfMaker a("a", 1), b("b", 1);
    auto thread = b.object("<</Type /Thread>>");
    auto bead = b.object("<</T " + thread.unparse() + " /P @1 /R [0 0 1 1]>>");
    bead.replaceKey("/N", bead);
    thread.replaceKey("/F", bead);
    b.set("/Threads", "[" + thread.unparse() + "]");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    QCOMPARE(scene.merge().reason, Reason::None);
    auto kept = scene.root().getKey("/Threads").getArrayItem(0).getKey("/F");
    QVERIFY(kept.getKey("/P").getObjGen() == scene.page(2).getObjGen());
    QVERIFY(kept.getKey("/N").getObjGen() == kept.getObjGen());
}

void TestMergePages::equalFontsAreKeptOnce()
{
    MergeScene scene;
    for (int i = 0; i < 5; ++i) {
        PdfMaker maker("p" + std::to_string(i) + "-", 1);
        auto file = QPDFObjectHandle::newStream(&maker.pdf(), noise(20000));
        auto descriptor = maker.object("<</Type /FontDescriptor /FontName /X /FontFile2 " +
                                       file.unparse() + ">>");
        auto font = maker.object("<</Type /Font /Subtype /TrueType /BaseFont /X "
                                 "/FontDescriptor " +
                                 descriptor.unparse() + ">>");
        maker.page(1).getKey("/Resources").getKey("/Font").replaceKey("/F2", font);
        scene.add(maker, QStringLiteral("p%1").arg(i));
    }
    QCOMPARE(scene.merge().reason, Reason::None);
    const auto fontOf = [&scene](int page) {
        return scene.page(page).getKey("/Resources").getKey("/Font").getKey("/F2").getObjGen();
    };
    QVERIFY(fontOf(1) == fontOf(5));
    QVERIFY(QFileInfo(scene.output()).size() < 30000);
}

void TestMergePages::equalPicturesAreKeptOnce()
{
    MergeScene scene;
    for (const auto *name : {"a", "b"}) {
        PdfMaker maker(name, 1);
        auto mask = QPDFObjectHandle::newStream(&maker.pdf(), noise(10000));
        mask.replaceDict(maker.parse("<</Subtype /Image /Width 100 /Height 100 "
                                     "/BitsPerComponent 8 /ColorSpace /DeviceGray>>"));
        auto picture = QPDFObjectHandle::newStream(&maker.pdf(), noise(30000));
        picture.replaceDict(maker.parse("<</Subtype /Image /Width 100 /Height 100 "
                                        "/BitsPerComponent 8 /ColorSpace /DeviceRGB /SMask " +
                                        mask.unparse() + ">>"));
        maker.page(1)
            .getKey("/Resources")
            .replaceKey("/XObject", maker.parse("<</I " + picture.unparse() + ">>"));
        scene.add(maker, QString::fromLatin1(name));
    }
    QCOMPARE(scene.merge().reason, Reason::None);
    const auto pictureOf = [&scene](int page) {
        return scene.page(page).getKey("/Resources").getKey("/XObject").getKey("/I");
    };
    QVERIFY(pictureOf(1).getObjGen() == pictureOf(2).getObjGen());
    QCOMPARE(contentOf(pictureOf(2)), noise(30000));
    QCOMPARE(contentOf(pictureOf(2).getDict().getKey("/SMask")), noise(10000));
}

void TestMergePages::differentStreamsOfEqualLengthStayDifferent()
{
    MergeScene scene;
    for (const auto *name : {"a", "b"}) {
        PdfMaker maker(name, 1);
        auto bytes = noise(5000);
        bytes[1000] = name[0];
        auto form = QPDFObjectHandle::newStream(&maker.pdf(), bytes);
        maker.page(1)
            .getKey("/Resources")
            .replaceKey("/XObject", maker.parse("<</X " + form.unparse() + ">>"));
        scene.add(maker, QString::fromLatin1(name));
    }
    QCOMPARE(scene.merge().reason, Reason::None);
    for (int page = 1; page <= 2; ++page) {
        auto form = scene.page(page).getKey("/Resources").getKey("/XObject").getKey("/X");
        QCOMPARE(contentOf(form)[1000], page == 1 ? 'a' : 'b');
    }
}

void TestMergePages::compressedStreamsAreTakenAsTheyAre()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QPDF source;
    source.processFile(QFile::encodeName(scene.path(QStringLiteral("a.pdf"))).constData());
    auto first = source.getAllPages().at(0);
    auto before = first.getKey("/Contents").getRawStreamData();
    auto after = scene.page(1).getKey("/Contents").getRawStreamData();
    const auto bytes = [](Buffer &buffer) {
        return std::string(reinterpret_cast<const char *>(buffer.getBuffer()), buffer.getSize());
    };
    QCOMPARE(bytes(*after), bytes(*before));
}

void TestMergePages::theHighestVersionIsWritten()
{
    PdfMaker a("a", 1), b("b", 1);
    b.set("/Version", "/1.7");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.result().getPDFVersion(), std::string("1.7"));
}

QTEST_GUILESS_MAIN(TestMergePages)
#include "tst_merge_pages.moc"
