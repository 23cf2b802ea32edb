#include "settings/IniFile.h"
#include "skin/SkinLook.h"

#include <QTest>

using namespace Quorlin;

namespace {

SkinLook lookOf(const QString &key, const QString &value)
{
    IniFile ini;
    ini.SetVar(key, QStringLiteral("Look"), value);
    return SkinLook::read(ini);
}

} // namespace

class TestSkinLook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutKeysItIsTheBuiltInLook();
    void everyColourIsReadByItsKey_data();
    void everyColourIsReadByItsKey();
    void valuesThatAreNoColoursAreLeftOut_data();
    void valuesThatAreNoColoursAreLeftOut();
    void colourMayLetShineThrough();
    void fontSizesHaveLimits_data();
    void fontSizesHaveLimits();
    void otherFontsFollowTheFirst();
    void cornersHaveLimits();
    void boldIsTheWordTrue();
    void familyIsReadAndShortened();
    void otherGroupsDoNotCount();
};

void TestSkinLook::withoutKeysItIsTheBuiltInLook()
{
    const auto look = SkinLook::read(IniFile());
    QVERIFY(look == SkinLook());
    QCOMPARE(look.fontSize(), 13);
    QVERIFY(!look.isBold());
    QVERIFY(look.fontFamily().isEmpty());
}

void TestSkinLook::everyColourIsReadByItsKey_data()
{
    QTest::addColumn<int>("colour");
    QTest::addColumn<QString>("key");
    const QStringList keys{QStringLiteral("TextColor"),
                           QStringLiteral("TitleColor"),
                           QStringLiteral("ConvertTextColor"),
                           QStringLiteral("InfoTextColor"),
                           QStringLiteral("DisabledTextColor"),
                           QStringLiteral("ListTextColor"),
                           QStringLiteral("ListColor"),
                           QStringLiteral("SelectionTextColor"),
                           QStringLiteral("SelectionColor"),
                           QStringLiteral("FieldTextColor"),
                           QStringLiteral("FieldColor"),
                           QStringLiteral("FieldBorderColor"),
                           QStringLiteral("AccentColor"),
                           QStringLiteral("AccentTextColor"),
                           QStringLiteral("FocusColor"),
                           QStringLiteral("HoverColor"),
                           QStringLiteral("PressedColor"),
                           QStringLiteral("ProgressBackColor"),
                           QStringLiteral("ProgressColor"),
                           QStringLiteral("ProgressTextColor"),
                           QStringLiteral("ProgressDoneTextColor"),
                           QStringLiteral("MenuColor"),
                           QStringLiteral("MenuTextColor"),
                           QStringLiteral("VeilColor")};
    for (int colour = 0; colour < keys.size(); ++colour)
        QTest::newRow(qPrintable(keys.at(colour))) << colour << keys.at(colour);
    QCOMPARE(std::size_t(keys.size()), LookColourRow::all().size());
}

void TestSkinLook::everyColourIsReadByItsKey()
{
    QFETCH(const int, colour);
    QFETCH(const QString, key);
    const auto look = lookOf(key, QStringLiteral("#12aBcD"));
    QCOMPARE(look.colour(LookColour(colour)), QColor(0x12, 0xAB, 0xCD));
    for (const auto &row : LookColourRow::all()) {
        if (row.colour != LookColour(colour))
            QCOMPARE(look.colour(row.colour), SkinLook().colour(row.colour));
    }
}

void TestSkinLook::valuesThatAreNoColoursAreLeftOut_data()
{
    QTest::addColumn<QString>("value");
    for (const auto *value : {"", "#", "red", "123456", "#12345", "#1234567", "#123456789",
                              "#12345g", "#+12345", "#-12345", "# 12345", "#0x1234", "transparent"})
        QTest::newRow(*value ? value : "empty") << QString::fromLatin1(value);
}

void TestSkinLook::valuesThatAreNoColoursAreLeftOut()
{
    QFETCH(const QString, value);
    QVERIFY(lookOf(QStringLiteral("TextColor"), value) == SkinLook());
}

void TestSkinLook::colourMayLetShineThrough()
{
    QCOMPARE(
        lookOf(QStringLiteral("HoverColor"), QStringLiteral("#182A62D6")).colour(LookColour::Hover),
        QColor(0x2A, 0x62, 0xD6, 0x18));
}

void TestSkinLook::fontSizesHaveLimits_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("size");
    QTest::newRow("plain") << QStringLiteral("18") << 18;
    QTest::newRow("smallest") << QStringLiteral("8") << 8;
    QTest::newRow("too small") << QStringLiteral("1") << 8;
    QTest::newRow("negative") << QStringLiteral("-5") << 8;
    QTest::newRow("too large") << QStringLiteral("49") << 48;
    QTest::newRow("absurd") << QStringLiteral("99999") << 13;
    QTest::newRow("word") << QStringLiteral("big") << 13;
    QTest::newRow("zero") << QStringLiteral("0") << 13;
}

void TestSkinLook::fontSizesHaveLimits()
{
    QFETCH(const QString, value);
    QTEST(lookOf(QStringLiteral("FontSize"), value).fontSize(), "size");
    QTEST(lookOf(QStringLiteral("TitleFontSize"), value).titleFontSize(), "size");
    QTEST(lookOf(QStringLiteral("ConvertFontSize"), value).convertFontSize(), "size");
}

void TestSkinLook::otherFontsFollowTheFirst()
{
    const auto look = lookOf(QStringLiteral("FontSize"), QStringLiteral("20"));
    QCOMPARE(look.titleFontSize(), 20);
    QCOMPARE(look.convertFontSize(), 20);
}

void TestSkinLook::cornersHaveLimits()
{
    const auto cornersOf = [](const char *value) {
        return lookOf(QStringLiteral("Corners"), QString::fromLatin1(value)).corners();
    };
    QCOMPARE(SkinLook().corners(), 0);
    QCOMPARE(cornersOf("8"), 8);
    QCOMPARE(cornersOf("25"), 24);
    QCOMPARE(cornersOf("-1"), 0);
    QCOMPARE(cornersOf("round"), 0);
}

void TestSkinLook::boldIsTheWordTrue()
{
    QVERIFY(lookOf(QStringLiteral("Bold"), QStringLiteral("True")).isBold());
    QVERIFY(!lookOf(QStringLiteral("Bold"), QStringLiteral("yes")).isBold());
    QVERIFY(!lookOf(QStringLiteral("Bold"), QString()).isBold());
}

void TestSkinLook::familyIsReadAndShortened()
{
    const auto key = QStringLiteral("FontFamily");
    QCOMPARE(lookOf(key, QStringLiteral("DejaVu Sans")).fontFamily(),
             QStringLiteral("DejaVu Sans"));
    QCOMPARE(lookOf(key, QString(5000, QLatin1Char('x'))).fontFamily().size(), 100);
}

void TestSkinLook::otherGroupsDoNotCount()
{
    IniFile ini;
    ini.SetVar(QStringLiteral("FontSize"), QStringLiteral("FormMain"), QStringLiteral("20"));
    QVERIFY(SkinLook::read(ini) == SkinLook());
}

QTEST_GUILESS_MAIN(TestSkinLook)
#include "tst_skinlook.moc"
