#include "i18n/SystemLocale.h"

#include "i18n/LocaleTable.h"
#include "i18n/mdli18n.h"

#include <QSet>
#include <QTest>

using namespace Quorlin;

class TestSystemLocale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theFirstVariableThatIsSetCounts();
    void anEmptyVariableDoesNotCount();
    void noLocaleAtAllIsEnglish_data();
    void noLocaleAtAllIsEnglish();
    void namesHaveTheirIdentifiers_data();
    void namesHaveTheirIdentifiers();
    void anUnknownLanguageHasNoIdentifier_data();
    void anUnknownLanguageHasNoIdentifier();
    void languagesHaveTheirCodePages_data();
    void languagesHaveTheirCodePages();
    void anotherLocaleOfAKnownLanguageHasItsCodePage();
    void anUnknownLocaleHasNoCodePage();
    void theTableHoldsTheThirteenEnglishLocales();
    void noNameComesTwice();
};

void TestSystemLocale::init()
{
    for (const auto *const variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        qunsetenv(variable);
}

void TestSystemLocale::theFirstVariableThatIsSetCounts()
{
    const auto &system = SystemLocale::current();
    qputenv("LANG", "de_DE.UTF-8");
    QCOMPARE(system.threadLocale(), 1031U);
    qputenv("LC_MESSAGES", "fr_FR.UTF-8");
    QCOMPARE(system.threadLocale(), 1036U);
    qputenv("LC_ALL", "ja_JP.UTF-8");
    QCOMPARE(system.threadLocale(), 1041U);
}

void TestSystemLocale::anEmptyVariableDoesNotCount()
{
    qputenv("LC_ALL", "");
    qputenv("LANG", "ru_RU.UTF-8");
    QCOMPARE(SystemLocale::current().threadLocale(), 1049U);
}

void TestSystemLocale::noLocaleAtAllIsEnglish_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const auto *const name : {"", "C", "POSIX", "C.UTF-8", "C.utf8"})
        QTest::addRow("\"%s\"", name) << QByteArray(name);
}

void TestSystemLocale::noLocaleAtAllIsEnglish()
{
    QFETCH(QByteArray, name);
    qputenv("LANG", name);
    QCOMPARE(SystemLocale::current().threadLocale(), 1033U);
}

void TestSystemLocale::namesHaveTheirIdentifiers_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<quint32>("identifier");
    const auto row = [](const char *name, quint32 identifier) {
        QTest::addRow("%s", name) << QByteArray(name) << identifier;
    };
    row("en_US.UTF-8", 1033);
    row("en_GB", 2057);
    row("en_PH.UTF-8", 13321);
    row("de_AT.ISO-8859-15@euro", 3079);
    row("de_DE@euro", 1031);
    row("de", 1031);
    row("de_XX.UTF-8", 1031);
    row("en_DK.UTF-8", 1033);
    row("zh", 2052);
    row("zh_TW.Big5", 1028);
    row("ko_KR.eucKR", 1042);
    row("pt_BR", 1046);
    row("nb_NO.UTF-8", 1044);
    row("sr_RS.UTF-8", 10266);
    row("sr_RS.UTF-8@latin", 9242);
    row("sr_RS@latin", 9242);
}

void TestSystemLocale::namesHaveTheirIdentifiers()
{
    QFETCH(QByteArray, name);
    QFETCH(quint32, identifier);
    QCOMPARE(LocaleTable::identifier(name), identifier);
}

void TestSystemLocale::anUnknownLanguageHasNoIdentifier_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("language") << QByteArray("tlh_AQ.UTF-8");
    QTest::newRow("beginning of one") << QByteArray("d");
    QTest::newRow("signs") << QByteArray("//x@@..__");
    QTest::newRow("underline") << QByteArray("_DE");
    QTest::newRow("long") << QByteArray(100000, 'd');
}

void TestSystemLocale::anUnknownLanguageHasNoIdentifier()
{
    QFETCH(QByteArray, name);
    QCOMPARE(LocaleTable::identifier(name), 0U);
}

void TestSystemLocale::languagesHaveTheirCodePages_data()
{
    QTest::addColumn<QByteArray>("names");
    QTest::addColumn<int>("codePage");
    QTest::newRow("Western") << QByteArray("en de fr es it pt nl sv da nb fi") << 1252;
    QTest::newRow("Eastern European") << QByteArray("pl cs hu sk sl hr ro") << 1250;
    QTest::newRow("Cyrillic") << QByteArray("ru uk bg be sr") << 1251;
    QTest::newRow("Greek") << QByteArray("el") << 1253;
    QTest::newRow("Turkish") << QByteArray("tr az") << 1254;
    QTest::newRow("Hebrew") << QByteArray("he") << 1255;
    QTest::newRow("Arabic") << QByteArray("ar fa ur") << 1256;
    QTest::newRow("Baltic") << QByteArray("et lv lt") << 1257;
    QTest::newRow("Vietnamese") << QByteArray("vi") << 1258;
    QTest::newRow("Thai") << QByteArray("th") << 874;
    QTest::newRow("Japanese") << QByteArray("ja") << 932;
    QTest::newRow("Chinese, simplified") << QByteArray("zh_CN zh_SG") << 936;
    QTest::newRow("Chinese, traditional") << QByteArray("zh_TW zh_HK zh_MO") << 950;
    QTest::newRow("Korean") << QByteArray("ko") << 949;
    QTest::newRow("Hindi") << QByteArray("hi") << 0;
}

void TestSystemLocale::languagesHaveTheirCodePages()
{
    QFETCH(QByteArray, names);
    QFETCH(int, codePage);
    for (const auto &name : names.split(' ')) {
        qputenv("LANG", name + ".UTF-8");
        const auto locale = SystemLocale::current().threadLocale();
        QVERIFY2(locale != 0, name.constData());
        QCOMPARE(mdli18n::GetAnsiCodePage(locale), codePage);
    }
}

void TestSystemLocale::anotherLocaleOfAKnownLanguageHasItsCodePage()
{
    // Spanish, traditional sort.
    QCOMPARE(LocaleTable::ansiCodePage(0x040A), 1252);
}

void TestSystemLocale::anUnknownLocaleHasNoCodePage()
{
    QVERIFY(SystemLocale::current().defaultAnsiCodePage(0).isEmpty());
    QVERIFY(SystemLocale::current().defaultAnsiCodePage(0xFFFFFFFF).isEmpty());
    QCOMPARE(mdli18n::GetAnsiCodePage(0), 0);
}

void TestSystemLocale::theTableHoldsTheThirteenEnglishLocales()
{
    QList<quint32> english;
    for (const auto &row : LocaleTable::all()) {
        if (row.name.startsWith("en_"))
            english.append(row.identifier);
    }
    QCOMPARE(english, QList<quint32>({1033, 2057, 3081, 4105, 5129, 6153, 7177, 8201, 9225, 10249,
                                      11273, 12297, 13321}));
}

void TestSystemLocale::noNameComesTwice()
{
    QSet<QByteArray> names;
    for (const auto &row : LocaleTable::all()) {
        const auto name = row.name.toByteArray();
        QVERIFY2(!names.contains(name), name.constData());
        names.insert(name);
    }
}

QTEST_GUILESS_MAIN(TestSystemLocale)
#include "tst_systemlocale.moc"
