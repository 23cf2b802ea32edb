#include "i18n/TextTable.h"

#include "ExpectedTexts.h"
#include "LanguageText.h"
#include "i18n/TextRow.h"
#include "support/TestFolder.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>

using namespace Quorlin;
using Check = ExpectedText::Check;

class tst_texttable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void holdsTheBuiltInTexts_data() { rows(); }
    void holdsTheBuiltInTexts();
    void hasNoFurtherKeys();
    void findsKeysByTheirNamesCountingCase();
    void holdsTheBuiltInQualitiesInOrder();
    void theBuiltInLanguageIsCalledDeutsch();
    void loadsACompleteFile();

    void aFileWithoutOneKey_data() { rows(); }
    void aFileWithoutOneKey();
    void aFileWithOneEmptyText_data() { rows(); }
    void aFileWithOneEmptyText();
    void aPairWithoutBothTexts_data();
    void aPairWithoutBothTexts();
    void theFirstMissingTextInTheOrderOfReadingEndsTheLoading();
    void theOrderOfGroupsInTheFileDoesNotMatter();
    void onlyTheFirstGroupAndTheFirstKeyOfANameCount();
    void aKeyWithoutEqualsSignIsItsOwnText();

    void takesQualitiesInTheOrderOfTheFile();
    void takesEveryQualityOutOfTheNameOfAQuality();
    void theWordQualityCountsCase();
    void aFileWithoutQualitiesLeavesNone();
    void aQualityMayHaveAnEmptyText();
    void refusesTwoQualitiesOfOneKey();
    void qualitiesAreReadAfterTheDialogTexts();
    void anUnknownQualityHasNoText();
    void takesManyQualitiesInShortTime();

    void readsWindows1252();
    void keepsTextsAsTheyStand();
    void aFileThatFailsTakesTheTextsOfTheOneBeforeAway();

private:
    static void rows();
    [[nodiscard]] TextTable::Result load(const LanguageText &text);
    [[nodiscard]] TextTable::Result load(const QByteArray &bytes);
    [[nodiscard]] bool isBuiltIn() const;

    TestFolder m_folder;
    TextTable m_table;
};

namespace {

QString place(const ExpectedText &text)
{
    return QLatin1Char('[') + QLatin1String(text.group) + QLatin1String("] ") +
           QLatin1String(text.key);
}

} // namespace

void tst_texttable::rows()
{
    QTest::addColumn<int>("row");
    int row = 0;
    for (const auto &text : expectedTexts())
        QTest::newRow(text.key) << row++;
}

TextTable::Result tst_texttable::load(const LanguageText &text)
{
    return load(text.bytes());
}

TextTable::Result tst_texttable::load(const QByteArray &bytes)
{
    return m_table.load(m_folder.write("x.slg", bytes), QStringLiteral("x"));
}

bool tst_texttable::isBuiltIn() const
{
    const TextTable fresh;
    return m_table.language() == QStringLiteral("deutsch") &&
           m_table.qualities() == fresh.qualities() &&
           std::ranges::all_of(TextRow::all(), [this](const auto &row) {
               return m_table.text(row.key) == row.builtIn;
           });
}

void tst_texttable::holdsTheBuiltInTexts()
{
    QFETCH(int, row);
    const auto &expected = expectedTexts()[std::size_t(row)];
    const auto key = static_cast<TextKey>(row);
    QCOMPARE(TextTable().text(key), QString::fromLatin1(expected.builtIn));
    const auto &own = TextRow::of(key);
    QCOMPARE(QString(own.name), QString::fromLatin1(expected.key));
    QCOMPARE(QString(own.group), QString::fromLatin1(expected.group));
}

void tst_texttable::hasNoFurtherKeys()
{
    QCOMPARE(TextRow::all().size(), expectedTexts().size());
}

void tst_texttable::findsKeysByTheirNamesCountingCase()
{
    for (const auto &row : TextRow::all())
        QCOMPARE(TextRow::find(QString(row.name)), &row);
    QVERIFY(!TextRow::find(u"textbtnconvert"));
    QVERIFY(!TextRow::find(u""));
}

void tst_texttable::holdsTheBuiltInQualitiesInOrder()
{
    const auto same = [](const char *name) {
        return TextQuality{QString::fromLatin1(name), QString::fromLatin1(name)};
    };
    QCOMPARE(TextTable().qualities(),
             QList<TextQuality>({same("Default"), same("Low"), same("Medium"), same("High")}));
}

/// A deliberate mismatch: the texts are English.
void tst_texttable::theBuiltInLanguageIsCalledDeutsch()
{
    QCOMPARE(TextTable().language(), QStringLiteral("deutsch"));
}

void tst_texttable::loadsACompleteFile()
{
    QCOMPARE(load(LanguageText()), TextTable::Result::Loaded);
    QCOMPARE(m_table.language(), QStringLiteral("x"));
    QCOMPARE(m_table.problem(), QString());
    for (const auto &row : TextRow::all())
        QCOMPARE(m_table.text(row.key), QLatin1Char('<') + row.name + QLatin1Char('>'));
    m_table.loadDefaults();
    QVERIFY(isBuiltIn());
}

void tst_texttable::aFileWithoutOneKey()
{
    QFETCH(int, row);
    const auto &missing = expectedTexts()[std::size_t(row)];
    const auto result = load(LanguageText().without(missing.key));
    if (missing.check == Check::Required) {
        QCOMPARE(result, TextTable::Result::Invalid);
        QCOMPARE(m_table.problem(), place(missing));
        QVERIFY(isBuiltIn());
        return;
    }
    QCOMPARE(result, TextTable::Result::Loaded);
    QCOMPARE(m_table.text(static_cast<TextKey>(row)), QString());
}

void tst_texttable::aFileWithOneEmptyText()
{
    QFETCH(int, row);
    const auto &empty = expectedTexts()[std::size_t(row)];
    const auto result = load(LanguageText().set(empty.group, empty.key, "  "));
    QCOMPARE(result, empty.check == Check::Required ? TextTable::Result::Invalid
                                                    : TextTable::Result::Loaded);
}

void tst_texttable::aPairWithoutBothTexts_data()
{
    QTest::addColumn<int>("row");
    int pairs = 0;
    const auto all = expectedTexts();
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (all[at].check == Check::Pair && ++pairs % 2 == 0)
            QTest::newRow(all[at].key) << int(at);
    }
    QCOMPARE(pairs, 20);
}

void tst_texttable::aPairWithoutBothTexts()
{
    QFETCH(int, row);
    const auto &first = expectedTexts()[std::size_t(row) - 1];
    const auto &second = expectedTexts()[std::size_t(row)];
    QCOMPARE(load(LanguageText().without(first.key).set(second.group, second.key, "")),
             TextTable::Result::Invalid);
    QCOMPARE(m_table.problem(), place(second));
    QVERIFY(isBuiltIn());
}

void tst_texttable::theFirstMissingTextInTheOrderOfReadingEndsTheLoading()
{
    const auto all = expectedTexts();
    LanguageText text;
    for (auto at = all.size(); at-- > 0;) {
        text.without(all[at].key);
        if (all[at].check != Check::Required)
            continue;
        QCOMPARE(load(text), TextTable::Result::Invalid);
        QCOMPARE(m_table.problem(), place(all[at]));
    }
}

void tst_texttable::theOrderOfGroupsInTheFileDoesNotMatter()
{
    LanguageText text;
    text.withoutGroup("TEXT");
    for (const auto &row : expectedTexts()) {
        if (qstrcmp(row.group, "TEXT") == 0)
            text.set(row.group, row.key, "last");
    }
    QVERIFY(text.bytes().endsWith("TextInfoInProgress = last\r\n"));
    QCOMPARE(load(text), TextTable::Result::Loaded);
}

void tst_texttable::onlyTheFirstGroupAndTheFirstKeyOfANameCount()
{
    LanguageText text;
    text.addLine("TEXT", "TextBtnConvert = second");
    QCOMPARE(load(text), TextTable::Result::Loaded);
    QCOMPARE(m_table.text(TextKey::TextBtnConvert), QStringLiteral("<TextBtnConvert>"));
    QCOMPARE(load("[TEXT]\r\n" + LanguageText().bytes()), TextTable::Result::Invalid);
    QCOMPARE(m_table.problem(), QStringLiteral("[TEXT] TextBtnConvert"));
}

/// What the INI format makes of such a line.
void tst_texttable::aKeyWithoutEqualsSignIsItsOwnText()
{
    QCOMPARE(load(LanguageText().without("AboutTitle").addLine("ABOUT", "AboutTitle")),
             TextTable::Result::Loaded);
    QCOMPARE(m_table.text(TextKey::AboutTitle), QStringLiteral("AboutTitle"));
}

void tst_texttable::takesQualitiesInTheOrderOfTheFile()
{
    QCOMPARE(load(LanguageText().set("QUALITY", "QualityBest", "<Best>")),
             TextTable::Result::Loaded);
    QCOMPARE(m_table.qualities(),
             QList<TextQuality>({{QStringLiteral("Low"), QStringLiteral("<Low>")},
                                 {QStringLiteral("High"), QStringLiteral("<High>")},
                                 {QStringLiteral("Best"), QStringLiteral("<Best>")}}));
    QCOMPARE(m_table.qualityText(QStringLiteral("Best")), QStringLiteral("<Best>"));
}

void tst_texttable::takesEveryQualityOutOfTheNameOfAQuality()
{
    QCOMPARE(load(LanguageText()
                      .cleared("QUALITY")
                      .set("QUALITY", "QualityVeryQualityLowQuality", "a")
                      .set("QUALITY", "Plain", "b")
                      .set("QUALITY", "QualQualityity", "c")
                      .set("QUALITY", "Quality", "d")),
             TextTable::Result::Loaded);
    QStringList keys;
    for (const auto &quality : m_table.qualities())
        keys.append(quality.key);
    QCOMPARE(keys, QStringList({QStringLiteral("VeryLow"), QStringLiteral("Plain"),
                                QStringLiteral("Quality"), QString()}));
}

void tst_texttable::theWordQualityCountsCase()
{
    QCOMPARE(load(LanguageText().set("QUALITY", "qualityLow", "a").set("QUALITY", "low", "b")),
             TextTable::Result::Loaded);
    QCOMPARE(m_table.qualityText(QStringLiteral("qualityLow")), QStringLiteral("a"));
    QCOMPARE(m_table.qualityText(QStringLiteral("low")), QStringLiteral("b"));
    QCOMPARE(m_table.qualityText(QStringLiteral("Low")), QStringLiteral("<Low>"));
}

void tst_texttable::aFileWithoutQualitiesLeavesNone()
{
    QCOMPARE(load(LanguageText().cleared("QUALITY")), TextTable::Result::Loaded);
    QVERIFY(m_table.qualities().isEmpty());
    m_table.loadDefaults();
    QCOMPARE(load(LanguageText().withoutGroup("QUALITY")), TextTable::Result::Loaded);
    QVERIFY(m_table.qualities().isEmpty());
}

void tst_texttable::aQualityMayHaveAnEmptyText()
{
    QCOMPARE(load(LanguageText().set("QUALITY", "QualityLow", "")), TextTable::Result::Loaded);
    QCOMPARE(m_table.qualities().first(), (TextQuality{QStringLiteral("Low"), QString()}));
}

void tst_texttable::refusesTwoQualitiesOfOneKey()
{
    QCOMPARE(load(LanguageText().set("QUALITY", "Low", "again")), TextTable::Result::Invalid);
    QCOMPARE(m_table.problem(), QStringLiteral("[QUALITY] Low"));
    QVERIFY(isBuiltIn());
    QCOMPARE(load(LanguageText().addLine("QUALITY", "QualityLow = <Low>")),
             TextTable::Result::Invalid);
    QVERIFY(isBuiltIn());
}

void tst_texttable::qualitiesAreReadAfterTheDialogTexts()
{
    LanguageText text;
    text.set("QUALITY", "Low", "again").without("MenuLstOpen");
    QCOMPARE(load(text), TextTable::Result::Invalid);
    QCOMPARE(m_table.problem(), QStringLiteral("[QUALITY] Low"));
    QCOMPARE(load(text.without("DialogPDFExtension")), TextTable::Result::Invalid);
    QCOMPARE(m_table.problem(), QStringLiteral("[DIALOG] DialogPDFExtension"));
}

void tst_texttable::anUnknownQualityHasNoText()
{
    QCOMPARE(TextTable().qualityText(QStringLiteral("Best")), QString());
    QCOMPARE(TextTable().qualityText(QStringLiteral("QualityLow")), QString());
}

void tst_texttable::takesManyQualitiesInShortTime()
{
    constexpr int Many = 100000;
    QByteArray lines;
    for (int i = 0; i < Many; ++i)
        lines += "Quality" + QByteArray::number(i) + "=x\r\n";
    auto bytes = LanguageText().bytes();
    bytes.insert(bytes.indexOf("QualityLow"), lines);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(load(bytes), TextTable::Result::Loaded);
    QCOMPARE(m_table.qualities().size(), Many + 2);
    QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
}

void tst_texttable::readsWindows1252()
{
    QCOMPARE(load(LanguageText().set("APP", "AppWindowTitle", "\x80\x84\xfc\x93\x9c")),
             TextTable::Result::Loaded);
    QCOMPARE(m_table.text(TextKey::AppWindowTitle), QString::fromUtf16(u"€„ü“œ"));
}

void tst_texttable::keepsTextsAsTheyStand()
{
    const QByteArray odd("\t\"a = b\" & %1  c;#");
    QCOMPARE(load(LanguageText().set("APP", "AppWindowTitle", ' ' + odd + ' ')),
             TextTable::Result::Loaded);
    QCOMPARE(m_table.text(TextKey::AppWindowTitle), QString::fromLatin1(odd));
}

void tst_texttable::aFileThatFailsTakesTheTextsOfTheOneBeforeAway()
{
    QCOMPARE(load(LanguageText()), TextTable::Result::Loaded);
    QCOMPARE(m_table.load(m_folder.path("none.slg"), QStringLiteral("none")),
             TextTable::Result::NotFound);
    QVERIFY(isBuiltIn());
    QCOMPARE(load(LanguageText()), TextTable::Result::Loaded);
    QCOMPARE(load(LanguageText().without("ErrorWindowTitle")), TextTable::Result::Invalid);
    QVERIFY(isBuiltIn());
}

QTEST_GUILESS_MAIN(tst_texttable)
#include "tst_texttable.moc"
