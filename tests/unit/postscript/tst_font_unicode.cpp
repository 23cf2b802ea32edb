#include "component/backends/postscript/FontUnicode.h"
#include "component/backends/postscript/GlyphName.h"
#include "component/backends/postscript/TextFonts.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Quorlin;

class TestFontUnicode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void charactersAndRangesAreRead()
    {
        const auto font = FontUnicode::parse("begincmap 1 begincodespacerange <00><FF> "
                                             "endcodespacerange 2 beginbfchar <01><00660069> "
                                             "<02> <03B1> endbfchar 2 beginbfrange <03><05><0041> "
                                             "<06><07>[<0061><0062>] endbfrange endcmap");
        QCOMPARE(font.texts().size(), 7U);
        QCOMPARE(font.texts().at(1), std::u16string(u"fi"));
        QCOMPARE(font.texts().at(2), std::u16string(u"α"));
        QCOMPARE(font.texts().at(5), std::u16string(u"C"));
        QCOMPARE(font.texts().at(7), std::u16string(u"b"));
    }

    void damagedMapsGiveWhatTheyHave()
    {
        const auto font = FontUnicode::parse("2 beginbfchar <01><0041> <02> endbfchar "
                                             "1 beginbfrange <03><04> endbfrange <");
        QCOMPARE(font.texts().size(), 1U);
    }

    void hugeRangesEndSoon()
    {
        QByteArray map = "beginbfrange ";
        for (int i = 0; i < 20000; ++i)
            map += "<0000><FFFFFFFF><0041> ";
        QElapsedTimer timer;
        timer.start();
        const auto font = FontUnicode::parse(map.toStdString());
        QVERIFY(font.texts().size() <= 65536U);
        QVERIFY2(timer.elapsed() < 5000, "overlapping ranges must not multiply");
    }

    void textsFollowTheCodesToTheirCids()
    {
        const auto font = FontUnicode::parse("beginbfchar <41><0061> <42><0062> endbfchar");
        const auto byCid =
            font.byCid("1 begincidrange <41><41> 7 endcidrange 1 begincidchar <42> 99 endcidchar");
        QCOMPARE(byCid.texts().size(), 2U);
        QCOMPARE(byCid.texts().at(7), std::u16string(u"a"));
        QCOMPARE(byCid.texts().at(99), std::u16string(u"b"));
    }

    void glyphNamesTellTheirText()
    {
        QCOMPARE(glyphName(u"A"), "uni0041");
        QCOMPARE(glyphName(u"fi"), "uni00660069");
        QCOMPARE(glyphName(u"😀"), "u1F600");
        QCOMPARE(glyphName(u""), "");
        QCOMPARE(glyphName(std::u16string(1, char16_t(0xd800))), "");
        QCOMPARE(glyphName(u"😀😀"), "");
    }

    void textFontsHoldEachCharacterOnce()
    {
        TextFonts fonts;
        QCOMPARE(fonts.span(u"aba"), "[/QuorlinText0<010201>] QTspan");
        QCOMPARE(fonts.span(u"b"), "[/QuorlinText0<02>] QTspan");
        QCOMPARE(fonts.span(u""), "[] QTspan");
        QVERIFY(fonts.definitions().find("/uni0061/uni0062]") != std::string::npos);
    }

    void textFontsGrowBeyondOne()
    {
        TextFonts fonts;
        std::u16string text;
        for (char16_t c = 0x4e00; c < 0x4e00 + 256; ++c)
            text.push_back(c);
        const auto span = fonts.span(text);
        QVERIFY(span.find("/QuorlinText1<01>]") != std::string::npos);
        QVERIFY(fonts.definitions().find("/QuorlinText1 [") != std::string::npos);
    }
};

QTEST_APPLESS_MAIN(TestFontUnicode)
#include "tst_font_unicode.moc"
