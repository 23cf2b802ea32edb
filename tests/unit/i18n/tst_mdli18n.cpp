#include "i18n/mdli18n.h"

#include "i18n/FontCharset.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Quorlin;

namespace {

/// A system with one locale and one code page.
class FixedLocale : public SystemLocale
{
public:
    FixedLocale(quint32 locale, const QByteArray &page) : m_locale(locale), m_page(page) {}

    [[nodiscard]] quint32 threadLocale() const override { return m_locale; }
    [[nodiscard]] QByteArray defaultAnsiCodePage(quint32 locale) const override
    {
        return locale == m_locale ? m_page : QByteArray();
    }

private:
    quint32 m_locale;
    QByteArray m_page;
};

const FixedLocale German(1031, QByteArrayLiteral("1252"));
const FixedLocale Japanese(1041, QByteArrayLiteral("932"));

/// Notes down which control's font was set, in which order.
class NotingControl : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QFont font READ font WRITE noteFont)

public:
    NotingControl(QWidget *parent, QStringList &notes) : QWidget(parent), m_notes(notes) {}

    void noteFont(const QFont &value)
    {
        m_notes.append(objectName());
        setFont(value);
    }

private:
    QStringList &m_notes;
};

/// Its font can only be read.
class StubbornControl : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QFont font READ font CONSTANT)

public:
    using QWidget::QWidget;
};

/// What it calls its font is none.
class FontlessControl : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString font READ text WRITE setText)

public:
    using QWidget::QWidget;
    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString &text) { m_text = text; }

private:
    QString m_text = QStringLiteral("none");
};

QFont points(qreal size)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(size);
    return font;
}

QFont pixels(int size)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(size);
    return font;
}

FormFont withCodePage(const QFont &font, int codePage)
{
    FormFont result{font, -1};
    mdli18n::SetFontCharset(result, codePage);
    return result;
}

QVariant charsetOf(const QObject &control)
{
    return control.property(mdli18n::CharsetProperty);
}

} // namespace

class TestMdlI18n : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEnglishSystemTouchesNoFontAtAll_data();
    void anEnglishSystemTouchesNoFontAtAll();
    void aGermanOrFrenchSystemGivesTheAnsiSetAndKeepsFaceAndSize_data();
    void aGermanOrFrenchSystemGivesTheAnsiSetAndKeepsFaceAndSize();
    void aJapaneseSystemRaisesAnEightPointLabelToNineInItsOwnFace();
    void aJapaneseSystemKeepsTheSizeOfATwelvePointLabel();
    void anUnknownCodePageGivesTheDefaultSet();
    void aCodePageOfTheSystemThatIsNoNumberGivesTheDefaultSet();
    void everyCodePageHasItsSet_data();
    void everyCodePageHasItsSet();
    void eastAsianFacesHaveTheirNativeNames_data();
    void eastAsianFacesHaveTheirNativeNames();
    void theSizeRuleKnowsPointsAndPixels_data();
    void theSizeRuleKnowsPointsAndPixels();
    void onlyEastAsianSetsRaiseTheSize();
    void behindTheFaceComesAnInstalledFontThenTheDesignedOne();
    void aDesignedFontWithTheCharactersStaysAlone();
    void adaptingTwiceChangesNothingMore();
    void theWindowComesFirstThenItsControlsAsTheyWereMade();
    void controlsWithinControlsAreAdaptedToo();
    void aControlWithoutAFontIsPassedOver();
    void aControlThatRefusesIsPassedOver();
    void whatIsNoControlIsLeftAlone();
    void anUnchangedFontStillFollowsTheWindow();
    void theCodePageEndsAtTheFirstZeroCharacter();
    void aLocaleWithoutACodePageHasNone();
    void laterFontsAreAdaptedInTheSameWay();
    void laterFontsStayOnAnEnglishSystem();
};

void TestMdlI18n::anEnglishSystemTouchesNoFontAtAll_data()
{
    QTest::addColumn<quint32>("locale");
    for (const quint32 locale : {1033U, 2057U, 3081U, 4105U, 5129U, 6153U, 7177U, 8201U, 9225U,
                                 10249U, 11273U, 12297U, 13321U})
        QTest::addRow("%u", locale) << locale;
}

void TestMdlI18n::anEnglishSystemTouchesNoFontAtAll()
{
    QFETCH(quint32, locale);
    // Even a system in English with another code page.
    const FixedLocale english(locale, QByteArrayLiteral("932"));
    QWidget form;
    form.setFont(points(8));
    QStringList notes;
    NotingControl control(&form, notes);
    const auto before = control.font();
    mdli18n::AdaptFormFonts(form, english);
    QCOMPARE(notes, QStringList());
    QCOMPARE(control.font(), before);
    QCOMPARE(form.font(), points(8));
    QVERIFY(!charsetOf(form).isValid());
    QVERIFY(!charsetOf(control).isValid());
}

void TestMdlI18n::aGermanOrFrenchSystemGivesTheAnsiSetAndKeepsFaceAndSize_data()
{
    QTest::addColumn<quint32>("locale");
    QTest::newRow("German") << 1031U;
    QTest::newRow("French") << 1036U;
}

void TestMdlI18n::aGermanOrFrenchSystemGivesTheAnsiSetAndKeepsFaceAndSize()
{
    QFETCH(quint32, locale);
    QWidget form;
    form.setFont(points(7));
    QLabel label(&form);
    label.setFont(pixels(8));
    mdli18n::AdaptFormFonts(form, FixedLocale(locale, QByteArrayLiteral("1252")));
    QCOMPARE(charsetOf(form), QVariant(0));
    QCOMPARE(charsetOf(label), QVariant(0));
    QCOMPARE(form.font(), points(7));
    QCOMPARE(label.font().families(), pixels(8).families());
    QCOMPARE(label.font().pixelSize(), 8);
}

void TestMdlI18n::aJapaneseSystemRaisesAnEightPointLabelToNineInItsOwnFace()
{
    QWidget form;
    QLabel label(&form);
    label.setFont(points(8));
    mdli18n::AdaptFormFonts(form, Japanese);
    QCOMPARE(label.font().pointSizeF(), 9.0);
    QCOMPARE(label.font().family(), QStringLiteral("\uFF2D\uFF33 \uFF30\u30B4\u30B7\u30C3\u30AF"));
    QCOMPARE(charsetOf(label), QVariant(128));
    QCOMPARE(charsetOf(form), QVariant(128));
}

void TestMdlI18n::aJapaneseSystemKeepsTheSizeOfATwelvePointLabel()
{
    QWidget form;
    QLabel label(&form);
    label.setFont(points(12));
    mdli18n::AdaptFormFonts(form, Japanese);
    QCOMPARE(label.font().pointSizeF(), 12.0);
    QCOMPARE(charsetOf(label), QVariant(128));
}

void TestMdlI18n::anUnknownCodePageGivesTheDefaultSet()
{
    QWidget form;
    QLabel label(&form);
    label.setFont(points(8));
    mdli18n::AdaptFormFonts(form, FixedLocale(1054, QByteArrayLiteral("874")));
    QCOMPARE(charsetOf(label), QVariant(1));
    QCOMPARE(label.font(), points(8));
    QCOMPARE(withCodePage(points(8), 0).charset, 1);
    QCOMPARE(withCodePage(points(8), -1).charset, 1);
}

void TestMdlI18n::aCodePageOfTheSystemThatIsNoNumberGivesTheDefaultSet()
{
    const FixedLocale odd(1054, QByteArrayLiteral("UTF-8"));
    QCOMPARE(mdli18n::GetAnsiCodePage(1054, odd), 0);
    QWidget form;
    mdli18n::AdaptFormFonts(form, odd);
    QCOMPARE(charsetOf(form), QVariant(1));
}

void TestMdlI18n::everyCodePageHasItsSet_data()
{
    QTest::addColumn<int>("codePage");
    QTest::addColumn<int>("charset");
    const QList<std::pair<int, int>> sets{{1250, 238}, {1251, 204}, {1252, 0},   {1253, 161},
                                          {1254, 162}, {1255, 177}, {1256, 178}, {1257, 186},
                                          {932, 128},  {936, 134},  {949, 129},  {950, 136},
                                          {1258, 1},   {874, 1},    {65001, 1}};
    for (const auto &[codePage, charset] : sets)
        QTest::addRow("%d", codePage) << codePage << charset;
}

void TestMdlI18n::everyCodePageHasItsSet()
{
    QFETCH(int, codePage);
    QFETCH(int, charset);
    const auto font = withCodePage(points(12), codePage);
    QCOMPARE(font.charset, charset);
    QCOMPARE(font.font.pointSizeF(), 12.0);
    if (codePage > 1000)
        QCOMPARE(font.font.family(), points(12).family());
}

void TestMdlI18n::eastAsianFacesHaveTheirNativeNames_data()
{
    QTest::addColumn<int>("codePage");
    QTest::addColumn<QString>("face");
    QTest::newRow("Japanese") << 932
                              << QStringLiteral("\uFF2D\uFF33 \uFF30\u30B4\u30B7\u30C3\u30AF");
    QTest::newRow("Chinese, simplified") << 936 << QStringLiteral("\u5B8B\u4F53");
    QTest::newRow("Korean") << 949 << QStringLiteral("\uAD74\uB9BC");
    QTest::newRow("Chinese, traditional") << 950 << QStringLiteral("\u65B0\u7D30\u660E\u9AD4");
}

void TestMdlI18n::eastAsianFacesHaveTheirNativeNames()
{
    QFETCH(int, codePage);
    QFETCH(QString, face);
    QCOMPARE(FontCharset::ofCodePage(codePage).faceName(), face);
    QCOMPARE(withCodePage(points(9), codePage).font.family(), face);
}

void TestMdlI18n::theSizeRuleKnowsPointsAndPixels_data()
{
    QTest::addColumn<QFont>("font");
    QTest::addColumn<qreal>("expectedPoints");
    QTest::addColumn<int>("expectedPixels");
    QTest::newRow("8.25 points") << points(8.25) << 9.0 << -1;
    QTest::newRow("9 points") << points(9) << 9.0 << -1;
    QTest::newRow("9.5 points") << points(9.5) << 9.5 << -1;
    QTest::newRow("9 pixels") << pixels(9) << -1.0 << 12;
    QTest::newRow("11 pixels") << pixels(11) << -1.0 << 12;
    QTest::newRow("12 pixels") << pixels(12) << -1.0 << 12;
    QTest::newRow("20 pixels") << pixels(20) << -1.0 << 20;
}

void TestMdlI18n::theSizeRuleKnowsPointsAndPixels()
{
    QFETCH(QFont, font);
    QFETCH(qreal, expectedPoints);
    QFETCH(int, expectedPixels);
    for (const auto codePage : {932, 936, 949, 950}) {
        const auto suited = withCodePage(font, codePage).font;
        QCOMPARE(suited.pointSizeF(), expectedPoints);
        QCOMPARE(suited.pixelSize(), expectedPixels);
    }
}

void TestMdlI18n::onlyEastAsianSetsRaiseTheSize()
{
    for (const auto codePage : {1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 874}) {
        QCOMPARE(withCodePage(points(6), codePage).font.pointSizeF(), 6.0);
        QCOMPARE(withCodePage(pixels(8), codePage).font.pixelSize(), 8);
    }
}

void TestMdlI18n::behindTheFaceComesAnInstalledFontThenTheDesignedOne()
{
    const auto families = withCodePage(points(9), 932).font.families();
    QCOMPARE(families.constLast(), QStringLiteral("DejaVu Sans"));
    const auto installed = QFontDatabase::families(QFontDatabase::Japanese);
    QCOMPARE(families.size(), installed.isEmpty() ? 2 : 3);
    if (!installed.isEmpty())
        QVERIFY(QFontDatabase::writingSystems(families.at(1)).contains(QFontDatabase::Japanese));
}

void TestMdlI18n::aDesignedFontWithTheCharactersStaysAlone()
{
    const QStringList designed{QStringLiteral("DejaVu Sans")};
    QVERIFY(QFontDatabase::families(QFontDatabase::Cyrillic).contains(designed.constFirst()));
    QCOMPARE(withCodePage(points(9), 1251).font.families(), designed);
    // A font of signs only gets one with letters behind it, and stays the first.
    QFont signs(QStringLiteral("OpenSymbol"));
    QVERIFY(QFontInfo(signs).family() == QLatin1String("OpenSymbol"));
    const auto families = withCodePage(signs, 1251).font.families();
    QCOMPARE(families.constFirst(), QStringLiteral("OpenSymbol"));
    QCOMPARE(families.size(), 2);
    QVERIFY(QFontDatabase::writingSystems(families.at(1)).contains(QFontDatabase::Cyrillic));
}

void TestMdlI18n::adaptingTwiceChangesNothingMore()
{
    for (const auto codePage : {1251, 932}) {
        const auto once = withCodePage(points(8), codePage);
        const auto twice = withCodePage(once.font, codePage);
        QCOMPARE(twice.font, once.font);
        QCOMPARE(twice.charset, once.charset);
    }
}

void TestMdlI18n::theWindowComesFirstThenItsControlsAsTheyWereMade()
{
    QStringList notes;
    NotingControl form(nullptr, notes);
    form.setObjectName(QStringLiteral("form"));
    for (const auto *const name : {"zebra", "ape", "mole"}) {
        auto *const control = new NotingControl(&form, notes);
        control->setObjectName(QLatin1String(name));
        control->setFont(points(8));
    }
    mdli18n::AdaptFormFonts(form, Japanese);
    QCOMPARE(notes, QStringList({QStringLiteral("form"), QStringLiteral("zebra"),
                                 QStringLiteral("ape"), QStringLiteral("mole")}));
}

void TestMdlI18n::controlsWithinControlsAreAdaptedToo()
{
    QWidget form;
    QWidget panel(&form);
    QLabel label(&panel);
    label.setFont(pixels(10));
    mdli18n::AdaptFormFonts(form, Japanese);
    QCOMPARE(charsetOf(label), QVariant(128));
    QCOMPARE(label.font().pixelSize(), 12);
}

void TestMdlI18n::aControlWithoutAFontIsPassedOver()
{
    QWidget form;
    FontlessControl fontless(&form);
    QLabel next(&form);
    mdli18n::AdaptFormFonts(form, Japanese);
    QCOMPARE(fontless.text(), QStringLiteral("none"));
    QVERIFY(!charsetOf(fontless).isValid());
    QCOMPARE(charsetOf(next), QVariant(128));
}

void TestMdlI18n::aControlThatRefusesIsPassedOver()
{
    QWidget form;
    StubbornControl stubborn(&form);
    stubborn.setFont(points(8));
    QLabel next(&form);
    for (const auto *const system : {&Japanese, &German}) {
        mdli18n::AdaptFormFonts(form, *system);
        QCOMPARE(stubborn.font(), points(8));
        QVERIFY(!charsetOf(stubborn).isValid());
        QVERIFY(charsetOf(next).isValid());
    }
}

void TestMdlI18n::whatIsNoControlIsLeftAlone()
{
    QWidget form;
    QTimer timer(&form);
    timer.setProperty("font", points(8));
    mdli18n::AdaptFormFonts(form, Japanese);
    QCOMPARE(timer.property("font").value<QFont>(), points(8));
    QVERIFY(!charsetOf(timer).isValid());
}

void TestMdlI18n::anUnchangedFontStillFollowsTheWindow()
{
    QWidget form;
    QLabel label(&form);
    mdli18n::AdaptFormFonts(form, German);
    form.setFont(pixels(31));
    QCOMPARE(label.font().pixelSize(), 31);
}

void TestMdlI18n::theCodePageEndsAtTheFirstZeroCharacter()
{
    const FixedLocale japanese(1041, QByteArray("932\0"
                                                "7\0xxxxxxxxxx",
                                                16));
    QCOMPARE(mdli18n::GetAnsiCodePage(1041, japanese), 932);
    const FixedLocale full(1041, QByteArray("1252", 4));
    QCOMPARE(mdli18n::GetAnsiCodePage(1041, full), 1252);
}

void TestMdlI18n::aLocaleWithoutACodePageHasNone()
{
    QCOMPARE(mdli18n::GetAnsiCodePage(0, Japanese), 0);
    QCOMPARE(mdli18n::GetAnsiCodePage(1041, FixedLocale(1041, QByteArray(16, '\0'))), 0);
}

void TestMdlI18n::laterFontsAreAdaptedInTheSameWay()
{
    const auto font = mdli18n::adapted(pixels(9), Japanese);
    QCOMPARE(font, withCodePage(pixels(9), 932).font);
    QCOMPARE(font.pixelSize(), 12);
    QCOMPARE(mdli18n::adapted(pixels(9), German), pixels(9));
}

void TestMdlI18n::laterFontsStayOnAnEnglishSystem()
{
    const FixedLocale english(2057, QByteArrayLiteral("932"));
    QCOMPARE(mdli18n::adapted(pixels(9), english), pixels(9));
}

QTEST_MAIN(TestMdlI18n)
#include "tst_mdli18n.moc"
