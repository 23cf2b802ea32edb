#include "unit/postscript/PdfBuilder.h"
#include "unit/postscript/PrintScene.h"
#include "unit/postscript/TinyType1.h"

#include <QTest>

using namespace Quorlin;

namespace {

/// Adds a part of a large Type 1 font. @return a reference to the font.
QByteArray addPart(PdfBuilder &builder, const QByteArray &tag, const QByteArray &glyph,
                   const QByteArray &text)
{
    const TinyType1 type1("Parted", glyph);
    const int file = builder.addStream(type1.lengths(), type1.program());
    const int descriptor =
        builder.add("<< /Type /FontDescriptor /FontName /" + tag +
                    "+Parted /Flags 4 /FontBBox [0 0 500 700] /Ascent 800 /Descent -200 /CapHeight "
                    "700 /ItalicAngle 0 /StemV 80 /FontFile " +
                    PdfBuilder::ref(file) + " >>");
    const int unicode =
        builder.addStream({}, "begincmap 1 beginbfchar <41> <" + text + "> endbfchar endcmap");
    return PdfBuilder::ref(builder.add(
        "<< /Type /Font /Subtype /Type1 /BaseFont /" + tag +
        "+Parted /FirstChar 65 /LastChar 65 /Widths [500] /FontDescriptor " +
        PdfBuilder::ref(descriptor) + " /ToUnicode " + PdfBuilder::ref(unicode) + " >>"));
}

} // namespace

class TestPrintFonts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void partsOfOneFontKeepTheirOwnGlyphs()
    {
        PdfDocument document;
        const auto first = addPart(document.builder(), "AAAAAA", "cid1", "4E2D");
        const auto second = addPart(document.builder(), "BAAAAA", "cid2", "6587");
        document.addPage("BT /A 40 Tf 20 100 Td (A) Tj /B 40 Tf 40 0 Td (A) Tj ET",
                         "/Font << /A " + first + " /B " + second + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words().join(QString()), QString::fromUtf8("中文"));
        QCOMPARE(scene.sourceColor(1, 70, 115), QList<int>({0, 0, 0}));
        QCOMPARE(scene.resultColor(1, 30, 115), QList<int>({0, 0, 0}));
        QCOMPARE(scene.resultColor(1, 70, 115), QList<int>({0, 0, 0}));
    }

    void aCommonNameDoesNotHideAnotherText()
    {
        PdfDocument document;
        const auto font = addPart(document.builder(), "AAAAAA", "fi", "00660069");
        document.addPage("BT /A 40 Tf 20 100 Td (A) Tj ET", "/Font << /A " + font + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words().join(QString()), QStringLiteral("fi"));
    }

    void differentGlyphsMayHaveOneText()
    {
        PdfDocument document;
        auto &builder = document.builder();
        const int low = builder.addStream({}, "1000 0 0 0 750 750 d1 0 0 750 300 re f");
        const int high = builder.addStream({}, "1000 0 0 0 750 750 d1 0 450 750 300 re f");
        const int unicode = builder.addStream(
            {}, "begincmap 2 beginbfchar <61> <0041> <62> <0041> endbfchar endcmap");
        const int font =
            builder.add("<< /Type /Font /Subtype /Type3 /FontBBox [0 0 750 750] /FontMatrix [0.001 "
                        "0 0 0.001 0 0] /CharProcs << /low " +
                        PdfBuilder::ref(low) + " /high " + PdfBuilder::ref(high) +
                        " >> /Encoding << /Type /Encoding /Differences [97 /low /high] >> "
                        "/FirstChar 97 /LastChar 98 /Widths [1000 1000] /ToUnicode " +
                        PdfBuilder::ref(unicode) + " >>");
        document.addPage("BT /D 40 Tf 20 100 Td (ab) Tj ET",
                         "/Font << /D " + PdfBuilder::ref(font) + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words().join(QString()), QStringLiteral("AA"));
        for (const int y : {106, 124}) {
            QCOMPARE(scene.resultColor(1, 30, y), scene.sourceColor(1, 30, y));
            QCOMPARE(scene.resultColor(1, 70, y), scene.sourceColor(1, 70, y));
        }
    }

    void codesThatADrawnFontDoesNotHaveShowNothing()
    {
        PdfDocument document;
        const int square =
            document.builder().addStream({}, "1000 0 0 0 750 750 d1 0 0 750 750 re f");
        const int font = document.builder().add(
            "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 750 750] /FontMatrix [0.001 0 0 0.001 0 "
            "0] /CharProcs << /square " +
            PdfBuilder::ref(square) +
            " >> /Encoding << /Type /Encoding /Differences [97 /square /missing] >> /FirstChar 97 "
            "/LastChar 98 /Widths [1000 1000] >>");
        document.addPage("BT /D 40 Tf 20 100 Td (a ba) Tj ET",
                         "/Font << /D " + PdfBuilder::ref(font) + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.resultColor(1, 30, 115), QList<int>({0, 0, 0}));
        QCOMPARE(scene.resultColor(1, 70, 115), QList<int>({255, 255, 255}));
        QCOMPARE(scene.resultColor(1, 110, 115), QList<int>({0, 0, 0}));
    }

    void glyphsWhoseTextIsToldApartAreNotTakenForLetters()
    {
        PdfDocument document;
        const int font = document.builder().add(
            "<< /Type /Font /Subtype /Type1 /BaseFont /Courier /Encoding /WinAnsiEncoding >>");
        document.addPage("BT /C 20 Tf 20 100 Td (before ) Tj "
                         "/Span <</ActualText <FEFF0915093F>>> BDC (&x) Tj 1 Tr 0 Tr (y) Tj EMC "
                         "( after) Tj ET",
                         "/Font << /C " + PdfBuilder::ref(font) + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList({QStringLiteral("before"), QString::fromUtf8("कि"),
                                             QStringLiteral("after")}));
        for (int x = 110; x < 140; x += 4)
            QCOMPARE(scene.resultColor(1, x, 104), scene.sourceColor(1, x, 104));
    }

    void textToldApartIsAsWideAsAllThatShowsIt()
    {
        PdfDocument document;
        document.addPage("BT /F1 20 Tf 20 100 Td (a) Tj "
                         "/Span <</ActualText <FEFF0062>>> BDC (i) Tj [-20] TJ (ill) Tj [-20] TJ "
                         "(ill) Tj EMC (c) Tj ET");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList(QStringLiteral("abc")));
    }

    void outlinedAndClippingTextIsFound()
    {
        PdfDocument document;
        document.addPage("BT 1 Tr /F1 40 Tf 20 100 Td (Line) Tj ET q BT 7 Tr /F1 40 Tf 150 100 Td "
                         "(Clip) Tj ET 1 0 0 rg 0 0 300 200 re f Q");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList({QStringLiteral("Line"), QStringLiteral("Clip")}));
        for (int x = 20; x < 250; x += 9)
            QCOMPARE(scene.resultColor(1, x, 110), scene.sourceColor(1, x, 110));
    }
};

QTEST_GUILESS_MAIN(TestPrintFonts)
#include "tst_print_fonts.moc"
