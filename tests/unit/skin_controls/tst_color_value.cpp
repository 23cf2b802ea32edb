#include "skin/controls/ColorValue.h"
#include "skin/controls/InputCodes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPalette>
#include <QTest>

using namespace Quorlin;

class TestColorValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsBlueGreenRed();
    void takesSystemColorsFromThePalette_data();
    void takesSystemColorsFromThePalette();
    void takesAnUnknownSystemColorAsBlack();
    void keepsAPlainColor();
    void measuresContrast();
    void keepsAReadableColor();
    void replacesAnUnreadableColor();
    void tellsKeys_data();
    void tellsKeys();
    void tellsShiftsAndButtons();
};

void TestColorValue::readsBlueGreenRed()
{
    QCOMPARE(ColorValue::resolved(0x00FF8040), QColor(0x40, 0x80, 0xFF));
}

void TestColorValue::takesSystemColorsFromThePalette_data()
{
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QPalette::ColorRole>("role");
    QTest::newRow("button face") << 0x8000000FU << QPalette::Button;
    QTest::newRow("button text") << 0x80000012U << QPalette::ButtonText;
    QTest::newRow("window background") << 0x80000005U << QPalette::Base;
    QTest::newRow("window text") << 0x80000008U << QPalette::Text;
    QTest::newRow("highlight") << 0x8000000DU << QPalette::Highlight;
    QTest::newRow("highlight text") << 0x8000000EU << QPalette::HighlightedText;
    QTest::newRow("info text") << 0x80000017U << QPalette::ToolTipText;
    QTest::newRow("info background") << 0x80000018U << QPalette::ToolTipBase;
}

void TestColorValue::takesSystemColorsFromThePalette()
{
    QFETCH(quint32, value);
    QFETCH(QPalette::ColorRole, role);
    QPalette palette;
    for (int other = 0; other < QPalette::NColorRoles; ++other)
        palette.setColor(QPalette::ColorRole(other), QColor(other, 0, 0));
    QCOMPARE(ColorValue::resolved(value, palette), QColor(role, 0, 0));
    QCOMPARE(ColorValue::resolved(value), QApplication::palette().color(QPalette::Active, role));
}

void TestColorValue::takesAnUnknownSystemColorAsBlack()
{
    QCOMPARE(ColorValue::resolved(0x80000019), QColor(Qt::black));
    QCOMPARE(ColorValue::resolved(0xFFFFFFFF), QColor(Qt::black));
}

void TestColorValue::keepsAPlainColor()
{
    QCOMPARE(ColorValue::stored(QColor(1, 2, 3)), 0x030201U);
    QCOMPARE(ColorValue::resolved(ColorValue::stored(QColor(9, 80, 200))), QColor(9, 80, 200));
}

void TestColorValue::measuresContrast()
{
    QCOMPARE(ColorValue::contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(ColorValue::contrast(Qt::white, Qt::black), 21.0);
    QCOMPARE(ColorValue::contrast(Qt::red, Qt::red), 1.0);
    QVERIFY(qAbs(ColorValue::contrast(QColor(0x76, 0x76, 0x76), Qt::white) - 4.54) < 0.01);
}

void TestColorValue::keepsAReadableColor()
{
    QCOMPARE(ColorValue::readableOn(Qt::white, QColor(0, 0, 160)), QColor(0, 0, 160));
}

void TestColorValue::replacesAnUnreadableColor()
{
    QCOMPARE(ColorValue::readableOn(Qt::black, QColor(40, 40, 40)), QColor(Qt::white));
    QCOMPARE(ColorValue::readableOn(Qt::yellow, Qt::white), QColor(Qt::black));
}

void TestColorValue::tellsKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("onKeypad");
    QTest::addColumn<int>("code");
    QTest::newRow("letter") << int(Qt::Key_A) << false << 65;
    QTest::newRow("digit") << int(Qt::Key_7) << false << 55;
    QTest::newRow("enter") << int(Qt::Key_Return) << false << 13;
    QTest::newRow("F12") << int(Qt::Key_F12) << false << 123;
    QTest::newRow("delete") << int(Qt::Key_Delete) << false << 46;
    QTest::newRow("point is not delete") << int(Qt::Key_Period) << false << 190;
    QTest::newRow("keypad digit") << int(Qt::Key_7) << true << 103;
    QTest::newRow("keypad arrow") << int(Qt::Key_Left) << true << 37;
    QTest::newRow("unknown") << int(Qt::Key_LaunchMail) << false << 0;
}

void TestColorValue::tellsKeys()
{
    QFETCH(int, key);
    QFETCH(bool, onKeypad);
    const auto modifiers = onKeypad ? Qt::KeypadModifier : Qt::NoModifier;
    QTEST(InputCodes::key(QKeyEvent(QEvent::KeyPress, key, modifiers)), "code");
}

void TestColorValue::tellsShiftsAndButtons()
{
    QCOMPARE(InputCodes::shift(Qt::NoModifier), 0);
    QCOMPARE(InputCodes::shift(Qt::ShiftModifier | Qt::AltModifier), 5);
    QCOMPARE(InputCodes::shift(Qt::ControlModifier | Qt::MetaModifier), 2);
    QCOMPARE(InputCodes::buttons(Qt::LeftButton | Qt::MiddleButton), 5);
    QCOMPARE(InputCodes::buttons(Qt::RightButton | Qt::BackButton), 2);
}

QTEST_MAIN(TestColorValue)
#include "tst_color_value.moc"
