#include "skin/controls/KelLabel.h"

#include "PaintCounter.h"
#include "Pixels.h"

#include <QElapsedTimer>
#include <QMetaProperty>
#include <QTest>

using namespace Quorlin;

namespace {

const QStringList Names = {
    QStringLiteral("Alignment"),         QStringLiteral("Appearance"),
    QStringLiteral("AutoSize"),          QStringLiteral("BackColor"),
    QStringLiteral("BackStyle"),         QStringLiteral("BorderColor"),
    QStringLiteral("BorderStyle"),       QStringLiteral("Caption"),
    QStringLiteral("Enabled"),           QStringLiteral("Font"),
    QStringLiteral("TextColor"),         QStringLiteral("UseMnemonic"),
    QStringLiteral("VerticalAlignment"), QStringLiteral("WordWrap"),
};

QVariantMap otherValues()
{
    QVariantMap bag;
    bag[QStringLiteral("Alignment")] = 1;
    bag[QStringLiteral("Appearance")] = 1;
    bag[QStringLiteral("AutoSize")] = true;
    bag[QStringLiteral("BackColor")] = 0x112233U;
    bag[QStringLiteral("BackStyle")] = 1;
    bag[QStringLiteral("BorderColor")] = 0x445566U;
    bag[QStringLiteral("BorderStyle")] = 1;
    bag[QStringLiteral("Caption")] = QStringLiteral("&Text");
    bag[QStringLiteral("Enabled")] = false;
    bag[QStringLiteral("Font")] = Pixels::font(20);
    bag[QStringLiteral("TextColor")] = 0x8000000EU;
    bag[QStringLiteral("UseMnemonic")] = false;
    bag[QStringLiteral("VerticalAlignment")] = 2;
    bag[QStringLiteral("WordWrap")] = true;
    return bag;
}

} // namespace

class TestLabelProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasTheFourteenPropertiesInOrder();
    void hasTheirTypes();
    void startsUsable();
    void setsEveryPropertyByName();
    void keepsEveryProperty();
    void readsWhatIsMissingAsEmpty();
    void readsAWrongKindAsEmpty();
    void readsAColorKeptAsANegativeNumber();
    void leavesTheNamesOfGeometryAlone();
    void staysEnabledInADisabledWindow();
    void hasAWindowHandle();
    void repaintsOnceForEveryChange_data();
    void repaintsOnceForEveryChange();
    void repaintsNothingForTheSameValue_data();
    void repaintsNothingForTheSameValue();
    void repaintsOnceForAnotherLookOfAState_data();
    void repaintsOnceForAnotherLookOfAState();
    void repaintsOnRefresh();
    void takesTheSizeOfItsText();
    void takesTheHeightOfItsWrappedText();
    void bearsHostileCaptions_data();
    void bearsHostileCaptions();
};

void TestLabelProperties::hasTheFourteenPropertiesInOrder()
{
    const auto &type = KelLabel::staticMetaObject;
    QStringList names;
    for (int i = 0; i < Names.size(); ++i)
        names.append(QString::fromLatin1(type.property(type.propertyOffset() + i).name()));
    QCOMPARE(names, Names);
    auto sorted = Names;
    sorted.sort();
    QCOMPARE(QStringList(KelLabel().writeProperties().keys()), sorted);
}

void TestLabelProperties::hasTheirTypes()
{
    const KelLabel label;
    const auto typeOf = [&label](const char *name) { return label.property(name).typeId(); };
    for (const auto *name :
         {"Alignment", "Appearance", "BackStyle", "BorderStyle", "VerticalAlignment"})
        QCOMPARE(typeOf(name), int(QMetaType::Int));
    for (const auto *name : {"BackColor", "BorderColor", "TextColor"})
        QCOMPARE(typeOf(name), int(QMetaType::UInt));
    for (const auto *name : {"AutoSize", "Enabled", "UseMnemonic", "WordWrap"})
        QCOMPARE(typeOf(name), int(QMetaType::Bool));
    QCOMPARE(typeOf("Caption"), int(QMetaType::QString));
    QCOMPARE(typeOf("Font"), int(QMetaType::QFont));
}

void TestLabelProperties::startsUsable()
{
    const KelLabel label;
    QVERIFY(label.Enabled());
    QVERIFY(label.UseMnemonic());
    QCOMPARE(label.TextColor(), 0x80000012U);
    QCOMPARE(label.BackColor(), 0x8000000FU);
    QCOMPARE(label.BorderColor(), 0x80000006U);
    QCOMPARE(label.BackStyle(), 0);
    QCOMPARE(label.BorderStyle(), 0);
    QCOMPARE(label.Caption(), QString());
    for (const auto color : {label.DisabledTextColor(), label.FocusColor(), label.VeilColor()})
        QCOMPARE(color, ColorValue::Computed);
    QCOMPARE(label.CornerRadius(), 0);
    QVERIFY(!label.Clickable());
    QCOMPARE(label.focusPolicy(), Qt::NoFocus);
}

void TestLabelProperties::setsEveryPropertyByName()
{
    KelLabel label;
    const auto values = otherValues();
    for (const auto &name : Names) {
        const auto latin = name.toLatin1();
        QVERIFY2(label.setProperty(latin.constData(), values[name]), latin.constData());
        QVERIFY2(label.property(latin.constData()) == values[name], latin.constData());
    }
}

void TestLabelProperties::keepsEveryProperty()
{
    KelLabel label;
    label.readProperties(otherValues());
    QCOMPARE(label.writeProperties(), otherValues());
    KelLabel copy;
    copy.readProperties(label.writeProperties());
    QCOMPARE(copy.writeProperties(), otherValues());
}

void TestLabelProperties::readsWhatIsMissingAsEmpty()
{
    KelLabel label;
    label.readProperties(otherValues());
    label.readProperties({});
    QCOMPARE(label.Alignment(), 0);
    QCOMPARE(label.BackColor(), 0U);
    QCOMPARE(label.TextColor(), 0U);
    QCOMPARE(label.Caption(), QString());
    QVERIFY(!label.Enabled());
    QVERIFY(!label.UseMnemonic());
    QVERIFY(!label.AutoSize());
    QCOMPARE(label.Font(), QFont());
}

void TestLabelProperties::readsAWrongKindAsEmpty()
{
    KelLabel label;
    label.Alignment(2);
    label.readProperties({{QStringLiteral("Alignment"), QStringLiteral("left")},
                          {QStringLiteral("Caption"), QStringLiteral("text")}});
    QCOMPARE(label.Alignment(), 0);
    QCOMPARE(label.Caption(), QStringLiteral("text"));
}

void TestLabelProperties::readsAColorKeptAsANegativeNumber()
{
    KelLabel label;
    label.readProperties({{QStringLiteral("TextColor"), int(0x80000012U)}});
    QCOMPARE(label.TextColor(), 0x80000012U);
}

void TestLabelProperties::leavesTheNamesOfGeometryAlone()
{
    const auto &type = KelLabel::staticMetaObject;
    for (const auto *name : {"visible", "width", "height"})
        QVERIFY(type.indexOfProperty(name) < QWidget::staticMetaObject.propertyCount());
    for (const auto *name : {"Left", "Top", "Visible", "Width", "Height"})
        QCOMPARE(type.indexOfProperty(name), -1);
}

void TestLabelProperties::staysEnabledInADisabledWindow()
{
    QWidget window;
    KelLabel label(&window);
    window.setEnabled(false);
    QVERIFY(!label.isEnabled());
    QVERIFY(label.Enabled());
    label.Enabled(false);
    window.setEnabled(true);
    QVERIFY(!label.isEnabled());
    QVERIFY(!label.Enabled());
}

void TestLabelProperties::hasAWindowHandle()
{
    const KelLabel label;
    QVERIFY(label.hWnd() != 0);
    QCOMPARE(label.hWnd(), label.winId());
}

void TestLabelProperties::repaintsOnceForEveryChange_data()
{
    QTest::addColumn<QString>("name");
    for (const auto &name : Names)
        QTest::newRow(qPrintable(name)) << name;
}

void TestLabelProperties::repaintsOnceForEveryChange()
{
    QFETCH(QString, name);
    KelLabel label;
    label.resize(120, 40);
    label.Caption(QStringLiteral("&Caption"));
    PaintCounter paints(label);
    QVERIFY(label.setProperty(name.toLatin1().constData(), otherValues()[name]));
    QCOMPARE(paints.take(), 1);
}

void TestLabelProperties::repaintsNothingForTheSameValue_data()
{
    repaintsOnceForEveryChange_data();
}

void TestLabelProperties::repaintsNothingForTheSameValue()
{
    QFETCH(QString, name);
    KelLabel label;
    label.resize(120, 40);
    label.readProperties(otherValues());
    PaintCounter paints(label);
    QVERIFY(label.setProperty(name.toLatin1().constData(), otherValues()[name]));
    QCOMPARE(paints.take(), 0);
}

void TestLabelProperties::repaintsOnceForAnotherLookOfAState_data()
{
    QTest::addColumn<QString>("name");
    for (const auto *name : {"DisabledTextColor", "CornerRadius", "FocusColor", "VeilColor"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestLabelProperties::repaintsOnceForAnotherLookOfAState()
{
    QFETCH(QString, name);
    KelLabel label;
    label.resize(120, 40);
    PaintCounter paints(label);
    QVERIFY(label.setProperty(name.toLatin1().constData(), 7));
    QCOMPARE(paints.take(), 1);
    QVERIFY(label.setProperty(name.toLatin1().constData(), 7));
    QCOMPARE(paints.take(), 0);
    QCOMPARE(label.property(name.toLatin1().constData()).toInt(), 7);
}

void TestLabelProperties::repaintsOnRefresh()
{
    KelLabel label;
    label.resize(120, 40);
    PaintCounter paints(label);
    label.Refresh();
    QCOMPARE(paints.take(), 1);
}

void TestLabelProperties::takesTheSizeOfItsText()
{
    KelLabel label;
    label.Font(Pixels::font());
    label.Caption(QStringLiteral("Text"));
    label.AutoSize(true);
    const QFontMetricsF metrics(Pixels::font());
    const auto width = qCeil(metrics.horizontalAdvance(QStringLiteral("Text")));
    QCOMPARE(label.size(), QSize(width, qCeil(metrics.height())));
    label.BorderStyle(1);
    QCOMPARE(label.width(), width + 2);
    label.Appearance(1);
    QCOMPARE(label.width(), width + 4);
    label.Caption(QStringLiteral("Text\nText"));
    QCOMPARE(label.height(), 2 * qCeil(metrics.height()) + 4);
    label.show();
    label.resize(500, 500);
    QCOMPARE(label.width(), width + 4);
}

void TestLabelProperties::takesTheHeightOfItsWrappedText()
{
    KelLabel label;
    label.Font(Pixels::font());
    label.WordWrap(true);
    label.resize(60, 5);
    label.Caption(QStringLiteral("some words that wrap"));
    label.AutoSize(true);
    QCOMPARE(label.width(), 60);
    const auto tall = label.height();
    QVERIFY(tall >= 3 * QFontMetrics(Pixels::font()).height());
    label.show();
    label.resize(400, 5);
    QCOMPARE(label.width(), 400);
    QVERIFY(label.height() < tall);
}

void TestLabelProperties::bearsHostileCaptions_data()
{
    QTest::addColumn<QString>("caption");
    QTest::newRow("a megabyte") << QString(1024 * 1024, u'x');
    QTest::newRow("NUL inside") << QStringLiteral("a") + QChar() + QStringLiteral("b");
    QTest::newRow("control characters") << QStringLiteral("\x01\x02\x1B[31m\x07\x08\x7F");
    QTest::newRow("lone surrogates") << QString(QChar(0xD800)) + QChar(0xD800) + QChar(0xDC00);
    QTest::newRow("right to left") << QStringLiteral("\u05E9\u05DC\u05D5\u05DD &a");
    QTest::newRow("markup") << QStringLiteral("<img src='x'><h1>&big</h1>");
}

void TestLabelProperties::bearsHostileCaptions()
{
    QFETCH(QString, caption);
    QElapsedTimer timer;
    timer.start();
    KelLabel label;
    label.resize(100, 30);
    label.Caption(caption);
    QCOMPARE(label.Caption(), caption);
    for (const auto wrap : {false, true}) {
        label.WordWrap(wrap);
        QVERIFY(!Pixels::inkBox(Pixels::painted(label)).isEmpty());
    }
    label.AutoSize(true);
    QVERIFY(label.height() > 0);
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(TestLabelProperties)
#include "tst_label_properties.moc"
