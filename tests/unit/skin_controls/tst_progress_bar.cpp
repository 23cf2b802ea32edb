#include "skin/controls/KelProgressBar.h"

#include "PaintCounter.h"
#include "Pixels.h"
#include "winsupport/NumberedError.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QTest>

#include <climits>

using namespace Quorlin;

namespace {

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
    void repaintsNothingForTheSameValue();
    void repaintsNothingForAnEqualPercentage();
    void repaintsWhenThePercentageChanges();
};

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
