#include "skin/controls/KelProgressBar.h"

#include "PaintCounter.h"
#include "Pixels.h"
#include "winsupport/NumberedError.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QMetaProperty>
#include <QTest>

#include <climits>

using namespace Quorlin;

namespace {

const QStringList Names = {
    QStringLiteral("Style"),     QStringLiteral("Alignment"),   QStringLiteral("Appearance"),
    QStringLiteral("BackColor"), QStringLiteral("BorderStyle"), QStringLiteral("Caption"),
    QStringLiteral("Enabled"),   QStringLiteral("Font"),        QStringLiteral("Max"),
    QStringLiteral("Min"),       QStringLiteral("Percent"),     QStringLiteral("ScrollColor"),
    QStringLiteral("Value"),
};

QVariantMap otherValues()
{
    QVariantMap bag;
    bag[QStringLiteral("Style")] = 0;
    bag[QStringLiteral("Alignment")] = 1;
    bag[QStringLiteral("Appearance")] = 1;
    bag[QStringLiteral("BackColor")] = 0x112233U;
    bag[QStringLiteral("BorderStyle")] = 1;
    bag[QStringLiteral("Caption")] = QStringLiteral("Caption");
    bag[QStringLiteral("Enabled")] = false;
    bag[QStringLiteral("Font")] = Pixels::font(20);
    bag[QStringLiteral("Max")] = 60;
    bag[QStringLiteral("Min")] = 10;
    bag[QStringLiteral("Percent")] = QVariant::fromValue<qint16>(40);
    bag[QStringLiteral("ScrollColor")] = 0x445566U;
    bag[QStringLiteral("Value")] = 30;
    return bag;
}

QLabel *part(const KelProgressBar &bar, const char *name)
{
    return bar.findChild<QLabel *>(QLatin1String(name));
}

QString textOf(const KelProgressBar &bar)
{
    return part(bar, "textLabel")->text();
}

bool isShown(const KelProgressBar &bar, const char *name)
{
    return part(bar, name)->isVisibleTo(&bar);
}

} // namespace

class TestProgressBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasTheThirteenPropertiesInOrder();
    void hasTheirTypes();
    void startsWithItsDefaults();
    void readsDefaultsFromAnEmptyBag();
    void setsEveryPropertyByName();
    void keepsEveryProperty();
    void keepsOnlyWhatDiffers();
    void keepsAValueThatIsNotMin();
    void readsTheValueAsMinWhenItIsMissing();
    void readsTheValueLast();
    void readsAValueOutsideAsMin();

    void clampsThePercentage();
    void roundsToWholePercents_data();
    void roundsToWholePercents();
    void ignoresAValueAboveMax();
    void ignoresAValueBelowMin();
    void keepsTheBarWhenMaxEqualsMin();
    void refusesAnOverflow_data();
    void refusesAnOverflow();
    void takesTheLargestValueWithoutAnOverflow();
    void takesTheWidestRange();
    void leavesThePercentageWhenTheRangeChanges();
    void showsThePercentage();
    void keepsTheCaptionWhileTheBarMoves();
    void switchesBetweenPercentageAndCaption();
    void hidesTheTextOfAnEmptyCaption();
    void showsACaptionAsItStands();
    void bearsAMegabyteOfCaption();
    void hasAWindowHandle();
    void repaintsNothingForTheSameValue();
    void repaintsNothingForAnEqualPercentage();
    void repaintsNothingForTheSameProperty_data();
    void repaintsNothingForTheSameProperty();
    void repaintsWhenThePercentageChanges();
};

void TestProgressBar::hasTheThirteenPropertiesInOrder()
{
    const auto &type = KelProgressBar::staticMetaObject;
    QStringList names;
    for (int i = 0; i < Names.size(); ++i)
        names.append(QString::fromLatin1(type.property(type.propertyOffset() + i).name()));
    QCOMPARE(names, Names);
}

void TestProgressBar::hasTheirTypes()
{
    const KelProgressBar bar;
    const auto typeOf = [&bar](const char *name) { return bar.property(name).typeId(); };
    for (const auto *name :
         {"Style", "Alignment", "Appearance", "BorderStyle", "Max", "Min", "Value"})
        QCOMPARE(typeOf(name), int(QMetaType::Int));
    for (const auto *name : {"BackColor", "ScrollColor"})
        QCOMPARE(typeOf(name), int(QMetaType::UInt));
    QCOMPARE(typeOf("Percent"), int(QMetaType::Short));
    QCOMPARE(typeOf("Enabled"), int(QMetaType::Bool));
    QCOMPARE(typeOf("Caption"), int(QMetaType::QString));
    QCOMPARE(typeOf("Font"), int(QMetaType::QFont));
}

void TestProgressBar::startsWithItsDefaults()
{
    const KelProgressBar bar;
    QCOMPARE(bar.Style(), 1);
    QCOMPARE(bar.Alignment(), 2);
    QCOMPARE(bar.Appearance(), 0);
    QCOMPARE(bar.BackColor(), 0x8000000FU);
    QCOMPARE(bar.BorderStyle(), 0);
    QCOMPARE(bar.Caption(), QString());
    QVERIFY(bar.Enabled());
    QCOMPARE(bar.Font(), QWidget().font());
    QCOMPARE(bar.Max(), 100);
    QCOMPARE(bar.Min(), 0);
    QCOMPARE(bar.Percent(), qint16(0));
    QCOMPARE(bar.ScrollColor(), 0xFF8080U);
    QCOMPARE(bar.Value(), 0);
    QCOMPARE(textOf(bar), QStringLiteral("0 %"));
}

void TestProgressBar::readsDefaultsFromAnEmptyBag()
{
    KelProgressBar bar;
    bar.readProperties(otherValues());
    bar.readProperties({});
    QCOMPARE(bar.writeProperties(), QVariantMap());
    QCOMPARE(bar.Font(), QWidget().font());
    QCOMPARE(bar.Percent(), qint16(0));
}

void TestProgressBar::setsEveryPropertyByName()
{
    KelProgressBar bar;
    const auto values = otherValues();
    for (const auto &name : Names) {
        const auto latin = name.toLatin1();
        QVERIFY2(bar.setProperty(latin.constData(), values[name]), latin.constData());
        QVERIFY2(bar.property(latin.constData()) == values[name], latin.constData());
    }
}

void TestProgressBar::keepsEveryProperty()
{
    KelProgressBar bar;
    bar.readProperties(otherValues());
    QCOMPARE(bar.writeProperties(), otherValues());
    KelProgressBar copy;
    copy.readProperties(bar.writeProperties());
    QCOMPARE(copy.writeProperties(), otherValues());
}

void TestProgressBar::keepsOnlyWhatDiffers()
{
    KelProgressBar bar;
    QCOMPARE(bar.writeProperties(), QVariantMap());
    bar.Max(7);
    QCOMPARE(bar.writeProperties(), (QVariantMap{{QStringLiteral("Max"), 7}}));
}

void TestProgressBar::keepsAValueThatIsNotMin()
{
    KelProgressBar bar;
    bar.Min(10);
    bar.Value(10);
    QVERIFY(!bar.writeProperties().contains(QStringLiteral("Value")));
    bar.Value(11);
    QCOMPARE(bar.writeProperties().value(QStringLiteral("Value")), QVariant(11));
}

void TestProgressBar::readsTheValueAsMinWhenItIsMissing()
{
    KelProgressBar bar;
    bar.readProperties({{QStringLiteral("Min"), 500}, {QStringLiteral("Max"), 600}});
    QCOMPARE(bar.Value(), 500);
    QCOMPARE(bar.Percent(), qint16(0));
}

void TestProgressBar::readsTheValueLast()
{
    KelProgressBar bar;
    bar.readProperties({{QStringLiteral("Min"), 500},
                        {QStringLiteral("Max"), 600},
                        {QStringLiteral("Percent"), 7},
                        {QStringLiteral("Value"), 550}});
    QCOMPARE(bar.Value(), 550);
    QCOMPARE(bar.Percent(), qint16(50));
}

void TestProgressBar::readsAValueOutsideAsMin()
{
    KelProgressBar bar;
    bar.Value(20);
    bar.readProperties({{QStringLiteral("Min"), 50}, {QStringLiteral("Value"), 40}});
    QCOMPARE(bar.Value(), 50);
    QCOMPARE(bar.Percent(), qint16(0));
}

void TestProgressBar::clampsThePercentage()
{
    KelProgressBar bar;
    bar.Percent(150);
    QCOMPARE(bar.Percent(), qint16(100));
    QCOMPARE(textOf(bar), QStringLiteral("100 %"));
    QVERIFY(isShown(bar, "barLabel"));
    bar.Percent(-5);
    QCOMPARE(bar.Percent(), qint16(0));
    QCOMPARE(textOf(bar), QStringLiteral("0 %"));
    QVERIFY(!isShown(bar, "barLabel"));
}

void TestProgressBar::roundsToWholePercents_data()
{
    QTest::addColumn<int>("max");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("percent");
    QTest::newRow("1 of 3") << 3 << 1 << 33;
    QTest::newRow("2 of 3") << 3 << 2 << 67;
    QTest::newRow("1 of 8, a tie to even") << 8 << 1 << 12;
    QTest::newRow("3 of 8, a tie to even") << 8 << 3 << 38;
    QTest::newRow("5 of 8, a tie to even") << 8 << 5 << 62;
    QTest::newRow("1 of 200, a tie to even") << 200 << 1 << 0;
    QTest::newRow("3 of 200, a tie to even") << 200 << 3 << 2;
    QTest::newRow("all") << 8 << 8 << 100;
    QTest::newRow("almost all") << 1000 << 999 << 100;
}

void TestProgressBar::roundsToWholePercents()
{
    QFETCH(int, max);
    QFETCH(int, value);
    KelProgressBar bar;
    bar.Max(max);
    bar.Value(value);
    QTEST(int(bar.Percent()), "percent");
    QCOMPARE(bar.Value(), value);
    bar.Min(-1000);
    bar.Max(max - 1000);
    bar.Value(value - 1000);
    QTEST(int(bar.Percent()), "percent");
}

void TestProgressBar::ignoresAValueAboveMax()
{
    KelProgressBar bar;
    bar.Value(40);
    bar.Value(101);
    QCOMPARE(bar.Percent(), qint16(40));
    QCOMPARE(bar.Value(), 40);
    QCOMPARE(textOf(bar), QStringLiteral("40 %"));
}

void TestProgressBar::ignoresAValueBelowMin()
{
    KelProgressBar bar;
    bar.Value(40);
    bar.Value(-1);
    QCOMPARE(bar.Percent(), qint16(40));
    QCOMPARE(bar.Value(), 40);
}

void TestProgressBar::keepsTheBarWhenMaxEqualsMin()
{
    KelProgressBar bar;
    bar.Percent(40);
    bar.Min(7);
    bar.Max(7);
    bar.Value(7);
    QCOMPARE(bar.Percent(), qint16(40));
    QCOMPARE(textOf(bar), QStringLiteral("40 %"));
}

void TestProgressBar::refusesAnOverflow_data()
{
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<int>("value");
    QTest::newRow("product") << 0 << INT_MAX << 21474837;
    QTest::newRow("largest") << 0 << INT_MAX << INT_MAX;
    QTest::newRow("difference") << INT_MIN << INT_MAX << INT_MAX;
}

void TestProgressBar::refusesAnOverflow()
{
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(int, value);
    KelProgressBar bar;
    bar.Value(40);
    bar.Min(min);
    bar.Max(max);
    try {
        bar.Value(value);
        QFAIL("nothing was raised");
    } catch (const NumberedError &error) {
        QCOMPARE(error.number(), 6U);
        QCOMPARE(error.description(), QStringLiteral("Overflow"));
        QVERIFY(error.source().endsWith(QStringLiteral(".KelProgressBar")));
    }
    QCOMPARE(bar.Percent(), qint16(40));
    QCOMPARE(bar.Value(), 40);
}

void TestProgressBar::takesTheLargestValueWithoutAnOverflow()
{
    KelProgressBar bar;
    bar.Max(21474836);
    bar.Value(21474836);
    QCOMPARE(bar.Percent(), qint16(100));
}

void TestProgressBar::takesTheWidestRange()
{
    KelProgressBar bar;
    bar.Percent(40);
    bar.Min(INT_MIN);
    bar.Max(INT_MAX);
    bar.Value(INT_MIN + 21474836);
    QCOMPARE(bar.Percent(), qint16(0));
    bar.Percent(40);
    bar.Min(INT_MAX);
    bar.Max(INT_MIN);
    bar.Value(0);
    QCOMPARE(bar.Percent(), qint16(40));
}

void TestProgressBar::leavesThePercentageWhenTheRangeChanges()
{
    KelProgressBar bar;
    bar.Value(40);
    bar.Max(400);
    bar.Min(30);
    QCOMPARE(bar.Percent(), qint16(40));
    QCOMPARE(bar.Value(), 40);
}

void TestProgressBar::showsThePercentage()
{
    KelProgressBar bar;
    bar.Caption(QStringLiteral("Caption"));
    bar.Percent(42);
    QCOMPARE(textOf(bar), QStringLiteral("42 %"));
}

void TestProgressBar::keepsTheCaptionWhileTheBarMoves()
{
    KelProgressBar bar;
    bar.resize(200, 20);
    bar.Style(0);
    bar.Caption(QStringLiteral("Caption"));
    bar.Percent(42);
    QCOMPARE(textOf(bar), QStringLiteral("Caption"));
    QCOMPARE(part(bar, "barLabel")->width(), 84);
    bar.Percent(43);
    QCOMPARE(textOf(bar), QStringLiteral("Caption"));
    QCOMPARE(part(bar, "barLabel")->width(), 86);
}

void TestProgressBar::switchesBetweenPercentageAndCaption()
{
    KelProgressBar bar;
    bar.Caption(QStringLiteral("Caption"));
    bar.Percent(42);
    for (const auto style : {0, 2, -1}) {
        bar.Style(style);
        QCOMPARE(textOf(bar), QStringLiteral("Caption"));
        QVERIFY(isShown(bar, "textLabel"));
        bar.Style(1);
        QCOMPARE(textOf(bar), QStringLiteral("42 %"));
    }
}

void TestProgressBar::hidesTheTextOfAnEmptyCaption()
{
    KelProgressBar bar;
    bar.Style(0);
    QVERIFY(!isShown(bar, "textLabel"));
    bar.Style(1);
    QVERIFY(isShown(bar, "textLabel"));
}

void TestProgressBar::showsACaptionAsItStands()
{
    KelProgressBar bar;
    bar.Style(0);
    bar.Caption(QStringLiteral("<b>A</b> & B"));
    QCOMPARE(textOf(bar), QStringLiteral("<b>A</b> & B"));
    QCOMPARE(part(bar, "textLabel")->textFormat(), Qt::PlainText);
}

void TestProgressBar::bearsAMegabyteOfCaption()
{
    QElapsedTimer timer;
    timer.start();
    KelProgressBar bar;
    bar.resize(200, 20);
    bar.Style(0);
    bar.Caption(QString(1024 * 1024, u'x'));
    QVERIFY(!Pixels::painted(bar).isNull());
    QCOMPARE(bar.Caption().size(), 1024 * 1024);
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
}

void TestProgressBar::hasAWindowHandle()
{
    const KelProgressBar bar;
    QVERIFY(bar.hWnd() != 0);
    QCOMPARE(bar.hWnd(), bar.winId());
}

void TestProgressBar::repaintsNothingForTheSameValue()
{
    KelProgressBar bar;
    bar.resize(200, 20);
    bar.Value(42);
    PaintCounter paints(bar);
    bar.Value(42);
    bar.Percent(42);
    QCOMPARE(paints.take(), 0);
}

void TestProgressBar::repaintsNothingForAnEqualPercentage()
{
    KelProgressBar bar;
    bar.resize(200, 20);
    bar.Max(100000);
    bar.Value(42000);
    PaintCounter paints(bar);
    bar.Value(42001);
    QCOMPARE(bar.Value(), 42001);
    QCOMPARE(paints.take(), 0);
}

void TestProgressBar::repaintsNothingForTheSameProperty_data()
{
    QTest::addColumn<QString>("name");
    for (const auto &name : Names)
        QTest::newRow(qPrintable(name)) << name;
}

void TestProgressBar::repaintsNothingForTheSameProperty()
{
    QFETCH(QString, name);
    KelProgressBar bar;
    bar.resize(200, 20);
    bar.readProperties(otherValues());
    PaintCounter paints(bar);
    QVERIFY(bar.setProperty(name.toLatin1().constData(), otherValues()[name]));
    QCOMPARE(paints.take(), 0);
}

void TestProgressBar::repaintsWhenThePercentageChanges()
{
    KelProgressBar bar;
    bar.resize(200, 20);
    PaintCounter paints(bar);
    bar.Percent(42);
    QVERIFY(paints.take() > 0);
}

QTEST_MAIN(TestProgressBar)
#include "tst_progress_bar.moc"
