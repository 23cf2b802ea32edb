#include "skin/controls/KelProgressBar.h"

#include "Pixels.h"

#include <QLabel>
#include <QTest>

using namespace Quorlin;

namespace {

constexpr int Width = 200;
constexpr int Height = 24;
constexpr quint32 Yellow = 0x00FFFF;
constexpr quint32 Blue = 0xFF0000;

void prepare(KelProgressBar &bar)
{
    bar.resize(Width, Height);
    bar.Font(Pixels::font(14));
    bar.BackColor(Yellow);
    bar.ScrollColor(Blue);
}

QRect placeOf(const KelProgressBar &bar, const char *name)
{
    return bar.findChild<QLabel *>(QLatin1String(name))->geometry();
}

} // namespace

class TestProgressBarLook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawsABarAsWideAsThePercentage_data();
    void drawsABarAsWideAsThePercentage();
    void hidesTheBarAtZero();
    void insetsTheBarInsideItsFrame_data();
    void insetsTheBarInsideItsFrame();
    void drawsAFrame_data();
    void drawsAFrame();
    void centersTheTextVertically();
    void laysTheTextAcrossTheInnerWidth();
    void alignsTheText();
    void laysBothOutAnewWhenResized();
    void laysTheTextOutAnewForAnotherFont();
    void showsTheTextInTwoTones();
    void keepsBothTonesInOnePlace();
    void choosesATextThatCanBeRead_data();
    void choosesATextThatCanBeRead();
    void usesATextColorOfItsOwn();
    void usesAColorOfItsOwnForTheTextOverTheBar();
    void looksTheSameWhenDisabled();
    void drawsTheBarsEdgeOnWholePixels_data();
    void drawsTheBarsEdgeOnWholePixels();
    void paintsNothingOutside();
    void bearsHavingNoRoom();
};

void TestProgressBarLook::drawsABarAsWideAsThePercentage_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("width");
    QTest::newRow("1") << 1 << 2;
    QTest::newRow("33") << 33 << 66;
    QTest::newRow("99") << 99 << 198;
    QTest::newRow("100") << 100 << 200;
}

void TestProgressBarLook::drawsABarAsWideAsThePercentage()
{
    QFETCH(int, percent);
    QFETCH(int, width);
    KelProgressBar bar;
    prepare(bar);
    bar.Style(0);
    bar.Percent(qint16(percent));
    const auto image = Pixels::painted(bar);
    QCOMPARE(Pixels::inkBox(image, Qt::yellow), QRect(0, 0, width, Height));
    QCOMPARE(Pixels::countOf(image, Qt::blue), width * Height);
}

void TestProgressBarLook::hidesTheBarAtZero()
{
    KelProgressBar bar;
    prepare(bar);
    bar.Percent(50);
    bar.Percent(0);
    QCOMPARE(Pixels::countOf(Pixels::painted(bar), Qt::blue), 0);
}

void TestProgressBarLook::insetsTheBarInsideItsFrame_data()
{
    QTest::addColumn<int>("appearance");
    QTest::addColumn<int>("inset");
    QTest::newRow("flat") << 0 << 3;
    QTest::newRow("three-dimensional") << 1 << 4;
}

void TestProgressBarLook::insetsTheBarInsideItsFrame()
{
    QFETCH(int, appearance);
    QFETCH(int, inset);
    KelProgressBar bar;
    prepare(bar);
    bar.BorderStyle(1);
    bar.Appearance(appearance);
    bar.Percent(100);
    const QRect inner(inset, inset, Width - 2 * inset, Height - 2 * inset);
    QCOMPARE(placeOf(bar, "barLabel"), inner);
    bar.Percent(50);
    QCOMPARE(placeOf(bar, "barLabel").width(), inner.width() / 2);
    bar.BorderStyle(0);
    QCOMPARE(placeOf(bar, "barLabel"), QRect(0, 0, Width / 2, Height));
}

void TestProgressBarLook::drawsAFrame_data()
{
    QTest::addColumn<int>("appearance");
    QTest::addColumn<double>("scale");
    for (const auto scale : {1.0, 1.5, 2.0}) {
        QTest::addRow("flat %g", scale) << 0 << scale;
        QTest::addRow("three-dimensional %g", scale) << 1 << scale;
    }
}

void TestProgressBarLook::drawsAFrame()
{
    QFETCH(int, appearance);
    QFETCH(double, scale);
    KelProgressBar bar;
    prepare(bar);
    bar.Style(0);
    bar.BorderStyle(1);
    bar.Appearance(appearance);
    const auto image = Pixels::painted(bar, Qt::white, scale);
    QCOMPARE(Pixels::countOf(image, Qt::white), 0);
    QCOMPARE(Pixels::inkBox(image, Qt::yellow), image.rect());
    const auto x = image.width() / 2;
    QVERIFY(image.pixelColor(x, 0) != QColor(Qt::yellow));
    QVERIFY(image.pixelColor(x, image.height() - 1) != QColor(Qt::yellow));
    QVERIFY(image.pixelColor(0, image.height() / 2) != QColor(Qt::yellow));
    QVERIFY(image.pixelColor(image.width() - 1, image.height() / 2) != QColor(Qt::yellow));
    QCOMPARE(image.pixelColor(x, qCeil(2 * scale)), QColor(Qt::yellow));
}

void TestProgressBarLook::centersTheTextVertically()
{
    KelProgressBar bar;
    prepare(bar);
    bar.show();
    for (const auto height : {24, 51, 10}) {
        bar.resize(Width, height);
        const auto text = placeOf(bar, "textLabel");
        QCOMPARE(text.top(), (height - text.height()) / 2);
        QCOMPARE(text.height(), qCeil(QFontMetricsF(bar.Font()).height()));
    }
}

void TestProgressBarLook::laysTheTextAcrossTheInnerWidth()
{
    KelProgressBar bar;
    prepare(bar);
    QCOMPARE(placeOf(bar, "textLabel").width(), Width);
    bar.BorderStyle(1);
    QCOMPARE(placeOf(bar, "textLabel").left(), 3);
    QCOMPARE(placeOf(bar, "textLabel").width(), Width - 6);
}

void TestProgressBarLook::alignsTheText()
{
    KelProgressBar bar;
    prepare(bar);
    bar.setLayoutDirection(Qt::RightToLeft);
    const auto ink = [&bar] { return Pixels::inkBox(Pixels::painted(bar), Qt::yellow); };
    bar.Alignment(0);
    QVERIFY(ink().left() <= 3);
    bar.Alignment(1);
    QVERIFY(ink().right() >= Width - 4);
    for (const auto alignment : {2, 3, -1}) {
        bar.Alignment(alignment);
        QVERIFY(qAbs(ink().center().x() - Width / 2) <= 1);
    }
}

void TestProgressBarLook::laysBothOutAnewWhenResized()
{
    KelProgressBar bar;
    prepare(bar);
    bar.Percent(50);
    bar.show();
    bar.resize(300, 40);
    QCOMPARE(placeOf(bar, "barLabel"), QRect(0, 0, 150, 40));
    QCOMPARE(placeOf(bar, "textLabel").width(), 300);
    QCOMPARE(placeOf(bar, "textLabel").top(), (40 - placeOf(bar, "textLabel").height()) / 2);
}

void TestProgressBarLook::laysTheTextOutAnewForAnotherFont()
{
    KelProgressBar bar;
    prepare(bar);
    bar.Font(Pixels::font(20));
    const auto text = placeOf(bar, "textLabel");
    QCOMPARE(text.height(), qCeil(QFontMetricsF(Pixels::font(20)).height()));
    QCOMPARE(text.top(), (Height - text.height()) / 2);
}

void TestProgressBarLook::showsTheTextInTwoTones()
{
    KelProgressBar bar;
    prepare(bar);
    bar.Percent(50);
    const auto image = Pixels::painted(bar);
    const auto onBar = image.copy(0, 0, Width / 2, Height);
    const auto beside = image.copy(Width / 2, 0, Width / 2, Height);
    QVERIFY(Pixels::strongest(onBar, Qt::blue).contrast > 4.5);
    QVERIFY(Pixels::strongest(beside, Qt::yellow).contrast > 4.5);
    QVERIFY(Pixels::countOf(onBar, Qt::white) > 3);
    QCOMPARE(Pixels::countOf(beside, Qt::white), 0);
    QCOMPARE(Pixels::countOf(onBar, Qt::black), 0);
}

void TestProgressBarLook::keepsBothTonesInOnePlace()
{
    KelProgressBar bar;
    prepare(bar);
    bar.BorderStyle(1);
    bar.BorderStyle(1);
    bar.Style(0);
    bar.Caption(QStringLiteral("Hamburg"));
    const auto beside = Pixels::inkBox(Pixels::painted(bar).copy(10, 5, 180, 14), Qt::yellow);
    bar.Percent(100);
    const auto onBar = Pixels::inkBox(Pixels::painted(bar).copy(10, 5, 180, 14), Qt::blue);
    QCOMPARE(onBar, beside);
}

void TestProgressBarLook::choosesATextThatCanBeRead_data()
{
    QTest::addColumn<quint32>("back");
    QTest::addColumn<quint32>("scroll");
    QTest::newRow("defaults") << 0x8000000FU << 0xFF8080U;
    QTest::newRow("black") << 0x000000U << 0xFFFFFFU;
    QTest::newRow("white") << 0xFFFFFFU << 0x000000U;
    QTest::newRow("middle gray") << 0x777777U << 0x808080U;
    QTest::newRow("strong colours") << 0x0000FFU << 0x00FF00U;
}

void TestProgressBarLook::choosesATextThatCanBeRead()
{
    QFETCH(quint32, back);
    QFETCH(quint32, scroll);
    KelProgressBar bar;
    prepare(bar);
    bar.Font(Pixels::font(20));
    bar.BackColor(back);
    bar.ScrollColor(scroll);
    for (const auto percent : {0, 100}) {
        bar.Percent(qint16(percent));
        const auto behind = ColorValue::resolved(percent == 0 ? back : scroll);
        const auto found = Pixels::strongest(Pixels::painted(bar), behind);
        QVERIFY2(found.contrast >= 4.5, qPrintable(QString::number(found.contrast)));
    }
}

void TestProgressBarLook::usesATextColorOfItsOwn()
{
    KelProgressBar bar;
    prepare(bar);
    bar.TextColor(0x0000C0);
    const QColor red(0xC0, 0, 0);
    QVERIFY(Pixels::countOf(Pixels::painted(bar), red) > 3);
    bar.Percent(100);
    QCOMPARE(Pixels::countOf(Pixels::painted(bar), red), 0);
}

void TestProgressBarLook::usesAColorOfItsOwnForTheTextOverTheBar()
{
    KelProgressBar bar;
    prepare(bar);
    QCOMPARE(bar.DoneTextColor(), ColorValue::Computed);
    bar.TextColor(0x0000C0);
    // Hardly to be read on the bar: what was asked for counts.
    QVERIFY(bar.setProperty("DoneTextColor", 0xC00000U));
    const QColor darkBlue(0, 0, 0xC0);
    QCOMPARE(Pixels::countOf(Pixels::painted(bar), darkBlue), 0);
    bar.Percent(100);
    auto image = Pixels::painted(bar);
    QVERIFY(Pixels::countOf(image, darkBlue) > 3);
    QCOMPARE(Pixels::countOf(image, Qt::white), 0);
    bar.DoneTextColor(ColorValue::Computed);
    image = Pixels::painted(bar);
    QCOMPARE(Pixels::countOf(image, darkBlue), 0);
    QVERIFY(Pixels::countOf(image, Qt::white) > 3);
}

void TestProgressBarLook::looksTheSameWhenDisabled()
{
    KelProgressBar bar;
    prepare(bar);
    bar.BorderStyle(1);
    bar.Percent(50);
    const auto enabled = Pixels::painted(bar);
    bar.Enabled(false);
    QVERIFY(!bar.isEnabled());
    QCOMPARE(Pixels::painted(bar), enabled);
}

void TestProgressBarLook::drawsTheBarsEdgeOnWholePixels_data()
{
    QTest::addColumn<double>("scale");
    for (const auto scale : {1.0, 1.25, 1.5, 2.0})
        QTest::addRow("%g", scale) << scale;
}

void TestProgressBarLook::drawsTheBarsEdgeOnWholePixels()
{
    QFETCH(double, scale);
    QWidget window;
    window.resize(300, 60);
    KelProgressBar bar(&window);
    prepare(bar);
    bar.Style(0);
    bar.setGeometry(13, 7, 201, 23);
    for (const auto percent : {0, 13, 50, 77, 100}) {
        bar.Percent(qint16(percent));
        const auto image = Pixels::painted(window, Qt::white, scale);
        const auto all = image.width() * image.height();
        const auto plain = Pixels::countOf(image, Qt::white) + Pixels::countOf(image, Qt::yellow) +
                           Pixels::countOf(image, Qt::blue);
        QCOMPARE(plain, all);
        const auto filled = Pixels::countOf(image, Qt::blue) / Pixels::inkBox(image).height();
        QVERIFY(qAbs(filled - 201 * scale * percent / 100) <= scale + 1);
    }
}

void TestProgressBarLook::paintsNothingOutside()
{
    QWidget window;
    window.resize(200, 100);
    KelProgressBar bar(&window);
    prepare(bar);
    bar.Style(0);
    bar.Caption(QStringLiteral("a caption that has no room"));
    bar.setGeometry(50, 30, 60, 10);
    bar.Percent(70);
    QCOMPARE(Pixels::inkBox(Pixels::painted(window)), bar.geometry());
}

void TestProgressBarLook::bearsHavingNoRoom()
{
    KelProgressBar bar;
    prepare(bar);
    bar.BorderStyle(1);
    bar.Percent(100);
    for (const auto size : {QSize(1, 1), QSize(0, 0), QSize(5, 2)}) {
        bar.resize(size);
        QVERIFY(placeOf(bar, "barLabel").width() >= 0);
        if (!size.isEmpty())
            QCOMPARE(Pixels::painted(bar).size(), size);
    }
}

QTEST_MAIN(TestProgressBarLook)
#include "tst_progress_bar_look.moc"
