#include "component/backends/postscript/PostScriptText.h"

#include <QTest>

#include <limits>

using namespace Quorlin;

class TestPostScriptText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersHaveFourDecimalsAtMost()
    {
        QCOMPARE(PostScriptText::number(595.27559), "595.2756");
        QCOMPARE(PostScriptText::number(12.0), "12");
        QCOMPARE(PostScriptText::number(-0.00001), "0");
        QCOMPARE(PostScriptText::number(-1.5), "-1.5");
    }

    void impossibleNumbersBecomeHarmless()
    {
        QCOMPARE(PostScriptText::number(std::numeric_limits<double>::quiet_NaN()), "0");
        QCOMPARE(PostScriptText::number(std::numeric_limits<double>::infinity()), "0");
        QCOMPARE(PostScriptText::number(1e300), "1000000000");
    }

    void stringsCannotEndEarly()
    {
        QCOMPARE(PostScriptText::hexString(")\\>"), "<295C3E>");
        QCOMPARE(PostScriptText::hexString(""), "<>");
    }

    void stringsStayWithinTheLimitOfInterpreters()
    {
        const auto text = PostScriptText::hexString(std::string(100000, 'x'));
        QCOMPARE(std::count(text.begin(), text.end(), '7'), 65535);
    }

    void textBeyondAsciiIsUtf16WithItsMark()
    {
        QCOMPARE(PostScriptText::textString(QStringLiteral("ab")), "<6162>");
        QCOMPARE(PostScriptText::textString(QString::fromUtf8("é")), "<FEFF00E9>");
        QCOMPARE(PostScriptText::textString(QString::fromUtf8("😀")), "<FEFFD83DDE00>");
    }

    void commentsStayOnOneLine()
    {
        QCOMPARE(PostScriptText::comment(QStringLiteral("a\n%%EOF\r(é")), "a?%%EOF?(?");
        QCOMPARE(PostScriptText::comment(QString(1000, QLatin1Char('x'))).size(), 200U);
    }

    void onlyHarmlessNamesArePlain()
    {
        QVERIFY(PostScriptText::isPlainName("Chapter.1_a-b"));
        QVERIFY(!PostScriptText::isPlainName(""));
        QVERIFY(!PostScriptText::isPlainName("a b"));
        QVERIFY(!PostScriptText::isPlainName("a/b"));
        QVERIFY(!PostScriptText::isPlainName("caf\xc3\xa9"));
        QVERIFY(!PostScriptText::isPlainName(std::string(200, 'x')));
    }
};

QTEST_APPLESS_MAIN(TestPostScriptText)
#include "tst_postscript_text.moc"
