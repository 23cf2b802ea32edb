#include "unit/postscript/PdfBuilder.h"
#include "unit/postscript/PrintScene.h"
#include "unit/postscript/TinyFont.h"

#include <QTest>

#include <qpdf/QPDF.hh>

using namespace Quorlin;

namespace {

/// Adds a TrueType font of our own whose codes stand for what the map says.
QByteArray addFont(PdfBuilder &builder, const QByteArray &map)
{
    const auto program = TinyFont::program(8);
    const int file = builder.addStream("/Length1 " + QByteArray::number(program.size()), program);
    const int descriptor = builder.add(
        "<< /Type /FontDescriptor /FontName /AAAAAA+Tiny /Flags 4 /FontBBox [0 0 500 700] /Ascent "
        "800 /Descent -200 /CapHeight 700 /ItalicAngle 0 /StemV 80 /FontFile2 " +
        PdfBuilder::ref(file) + " >>");
    const int unicode = builder.addStream(
        {}, "/CIDInit /ProcSet findresource begin begincmap 1 begincodespacerange <00><FF> "
            "endcodespacerange " +
                map + " endcmap end");
    return PdfBuilder::ref(builder.add(
        "<< /Type /Font /Subtype /TrueType /BaseFont /AAAAAA+Tiny /FirstChar 0 /LastChar 7 /Widths "
        "[500 500 500 500 500 500 500 500] /FontDescriptor " +
        PdfBuilder::ref(descriptor) + " /ToUnicode " + PdfBuilder::ref(unicode) + " >>"));
}

QByteArray addCidFont(PdfBuilder &builder)
{
    const auto program = TinyFont::program(8);
    const int file = builder.addStream("/Length1 " + QByteArray::number(program.size()), program);
    const int descriptor = builder.add(
        "<< /Type /FontDescriptor /FontName /BBBBBB+Tiny /Flags 4 /FontBBox [0 0 500 700] /Ascent "
        "800 /Descent -200 /CapHeight 700 /ItalicAngle 0 /StemV 80 /FontFile2 " +
        PdfBuilder::ref(file) + " >>");
    const int glyphs = builder.addStream({}, QByteArray("\xff\xff\0\1\0\2\0\3\xff\xff", 10));
    const int descendant = builder.add(
        "<< /Type /Font /Subtype /CIDFontType2 /BaseFont /BBBBBB+Tiny /DW 500 /CIDSystemInfo << "
        "/Registry (Adobe) /Ordering (Identity) /Supplement 0 >> /CIDToGIDMap " +
        PdfBuilder::ref(glyphs) + " /FontDescriptor " + PdfBuilder::ref(descriptor) + " >>");
    const int codes = builder.addStream(
        "/Type /CMap /CMapName /Odd /CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) "
        "/Supplement 0 >>",
        "/CIDInit /ProcSet findresource begin 12 dict begin begincmap /CMapName /Odd def /CMapType "
        "1 def 1 begincodespacerange <00><FF> endcodespacerange 1 begincidrange <41><43> 1 "
        "endcidrange endcmap CMapName currentdict /CMap defineresource pop end end");
    const int unicode = builder.addStream(
        {}, "begincmap 3 beginbfchar <41><4E2D> <42><6587> <43><03A9> endbfchar endcmap");
    return PdfBuilder::ref(builder.add("<< /Type /Font /Subtype /Type0 /BaseFont /BBBBBB+Tiny-Odd "
                                       "/Encoding " +
                                       PdfBuilder::ref(codes) + " /DescendantFonts [" +
                                       PdfBuilder::ref(descendant) + "] /ToUnicode " +
                                       PdfBuilder::ref(unicode) + " >>"));
}

QByteArray fontResource(const QByteArray &font)
{
    return "/Font << /T " + font + " >>";
}

} // namespace

class TestPrintText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ligaturesAndGreekAreFoundAgain()
    {
        PdfDocument document;
        const auto font = addFont(document.builder(), "5 beginbfchar <01><006F> <02><006600660069> "
                                                      "<03><03B1> <04><03C9> <05><0020> endbfchar");
        document.addPage("BT /T 20 Tf 20 100 Td <01020503040504> Tj ET", fontResource(font));
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList({QStringLiteral("offi"), QString::fromUtf8("αω"),
                                             QString::fromUtf8("ω")}));
    }

    void compositeFontsAreFoundAgain()
    {
        PdfDocument document;
        const auto font = addCidFont(document.builder());
        document.addPage("BT /T 20 Tf 20 100 Td (ABC) Tj ET", fontResource(font));
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList(QString::fromUtf8("中文Ω")));
    }

    void drawnFontsAreFoundAgain()
    {
        PdfDocument document;
        auto &builder = document.builder();
        const int glyph = builder.addStream({}, "500 0 0 0 400 700 d1 0 0 400 700 re f");
        const int unicode = builder.addStream(
            {}, "begincmap 2 beginbfchar <41><0058> <42><00660069> endbfchar endcmap");
        const int font = builder.add(
            "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 500 700] /FontMatrix [.001 0 0 .001 0 "
            "0] /CharProcs << /g1 " +
            PdfBuilder::ref(glyph) + " /g2 " + PdfBuilder::ref(glyph) +
            " >> /Encoding << /Differences [65 /g1 /g2] >> /FirstChar 65 /LastChar 66 /Widths "
            "[500 500] /Resources << >> /ToUnicode " +
            PdfBuilder::ref(unicode) + " >>");
        document.addPage("BT /T 20 Tf 20 100 Td (ABA) Tj ET", fontResource(PdfBuilder::ref(font)));
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList(QStringLiteral("XfiX")));
    }

    void oneGlyphMayStandForDifferentTexts()
    {
        PdfDocument document;
        const auto font = addFont(document.builder(), "1 beginbfchar <01><0041> endbfchar");
        document.addPage("BT /T 20 Tf 20 100 Td <01> Tj "
                         "/Span <</ActualText <FEFF65E5>>> BDC <01> Tj EMC "
                         "/Span <</ActualText <FEFF672C>>> BDC <01> Tj EMC "
                         "/Span <</ActualText <FEFFD83DDE00>>> BDC <01> Tj EMC <01> Tj ET",
                         fontResource(font));
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList(QString::fromUtf8("A日本😀A")));
    }

    void textThatTheClippingPathHidesIsFound()
    {
        PdfDocument document;
        document.addPage(
            "q 20 90 60 40 re W n BT /F1 20 Tf 20 100 Td [(trun)-1(cated)-2( words)] TJ "
            "ET Q q 20 10 5 5 re W n BT /F1 20 Tf 150 100 Td (hidden) Tj ET Q");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList({QStringLiteral("truncated"), QStringLiteral("words"),
                                             QStringLiteral("hidden")}));
        QCOMPARE(scene.resultColor(1, 160, 107), scene.sourceColor(1, 160, 107));
        QCOMPARE(scene.resultColor(1, 100, 107), QList<int>({255, 255, 255}));
    }

    void invisibleTextStaysInvisibleAndIsFound()
    {
        PdfDocument document;
        document.addPage("BT /F1 40 Tf 3 Tr 20 100 Td (scanned) Tj ET "
                         "BT 0 Tr /F1 20 Tf 20 50 Td (seen) Tj ET");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList({QStringLiteral("scanned"), QStringLiteral("seen")}));
        for (int x = 20; x < 200; x += 3)
            QCOMPARE(scene.resultColor(1, x, 110), QList<int>({255, 255, 255}));
    }

    void fontsThatAreNotEmbeddedAreFound()
    {
        PdfDocument document;
        const int descriptor =
            document.builder().add("<< /Type /FontDescriptor /FontName /Nowhere /Flags 34 "
                                   "/FontBBox [0 0 1000 1000] /Ascent "
                                   "800 /Descent -200 /CapHeight 700 /ItalicAngle 0 /StemV 80 >>");
        const int font = document.builder().add("<< /Type /Font /Subtype /Type1 /BaseFont /Nowhere "
                                                "/FontDescriptor " +
                                                PdfBuilder::ref(descriptor) + " >>");
        document.addPage("BT /T 20 Tf 20 100 Td (Plain) Tj ET",
                         fontResource(PdfBuilder::ref(font)));
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words().join(QString()), QStringLiteral("Plain"));
    }
};

QTEST_GUILESS_MAIN(TestPrintText)
#include "tst_print_text.moc"
