#include "skin/controls/KelLabel.h"

#include "LabelSample.h"
#include "Pixels.h"

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

using namespace Quorlin;
using namespace LabelSample;

class TestLabelLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawsEveryLineOfACaption();
    void alignsTheLinesOfACaption();
    void wrapsALongText();
    void printsALongTextOnOneLine();
    void tellsATextWithoutRoomAsAToolTip();
    void keepsTheBeginningOfATextTooHigh();
    void underlinesTheAccessKey();
    void drawsADoubledAmpersandOnce();
    void drawsTextFromRightToLeft();
};

void TestLabelLines::drawsEveryLineOfACaption()
{
    KelLabel label;
    prepare(label, "HHH");
    const auto one = Pixels::inkBox(Pixels::painted(label));
    label.Caption(QStringLiteral("HHH\r\nHHH"));
    const auto two = Pixels::inkBox(Pixels::painted(label));
    QCOMPARE(two.topLeft(), one.topLeft());
    QCOMPARE(two.right(), one.right());
    QCOMPARE(two.bottom(), one.bottom() + qCeil(QFontMetricsF(label.Font()).height()));
}

void TestLabelLines::alignsTheLinesOfACaption()
{
    KelLabel label;
    prepare(label, "HHHHHHHH\nH");
    const auto lineHeight = qCeil(QFontMetricsF(label.Font()).height());
    const auto second = [&label, lineHeight] {
        const auto image = Pixels::painted(label);
        return Pixels::inkBox(image.copy(0, lineHeight, Width, lineHeight));
    };
    const auto left = second();
    label.Alignment(1);
    const auto right = second();
    label.Alignment(2);
    const auto center = second();
    QVERIFY(left.right() < Width / 4);
    QVERIFY(right.left() > Width * 3 / 4);
    QVERIFY(qAbs(center.center().x() - Width / 2) <= 2);
}

void TestLabelLines::wrapsALongText()
{
    KelLabel label;
    prepare(label, "several words that need lines");
    label.WordWrap(true);
    const auto ink = Pixels::inkBox(Pixels::painted(label));
    QVERIFY(ink.height() > QFontMetrics(label.Font()).height());
    QVERIFY(ink.width() <= Width);
    QVERIFY(!label.face().textBlock().isElided());
}

void TestLabelLines::printsALongTextOnOneLine()
{
    KelLabel label;
    prepare(label, "several words that need lines");
    const auto ink = Pixels::inkBox(Pixels::painted(label));
    QVERIFY(ink.height() < QFontMetrics(label.Font()).height());
    QVERIFY(label.face().textBlock().isElided());
}

void TestLabelLines::tellsATextWithoutRoomAsAToolTip()
{
    KelLabel label;
    prepare(label, "several <b>words</b> that && need lines");
    label.show();
    QVERIFY(QTest::qWaitForWindowExposed(&label));
    QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&label, &asked);
    QVERIFY(QToolTip::text().contains(QStringLiteral("&lt;b&gt;words&lt;/b&gt; that &amp; need")));
    label.resize(1000, Height);
    QCoreApplication::sendEvent(&label, &asked);
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestLabelLines::keepsTheBeginningOfATextTooHigh()
{
    KelLabel label;
    prepare(label, "1\n2\n3\n4\n5\n6\n7\n8");
    const auto top = Pixels::painted(label);
    for (const auto alignment : {1, 2}) {
        label.VerticalAlignment(alignment);
        QCOMPARE(Pixels::painted(label), top);
    }
}

void TestLabelLines::underlinesTheAccessKey()
{
    KelLabel label;
    prepare(label, "&Hamburh");
    label.UseMnemonic(true);
    const auto marked = Pixels::inkBox(Pixels::painted(label));
    label.Caption(QStringLiteral("Hamburh"));
    const auto plain = Pixels::inkBox(Pixels::painted(label));
    QCOMPARE(marked.top(), plain.top());
    QCOMPARE(marked.right(), plain.right());
    QVERIFY(marked.bottom() > plain.bottom());
    label.UseMnemonic(false);
    label.Caption(QStringLiteral("&Hamburh"));
    QVERIFY(Pixels::inkBox(Pixels::painted(label)).width() > plain.width() + 5);
}

void TestLabelLines::drawsADoubledAmpersandOnce()
{
    KelLabel label;
    prepare(label, "A && B");
    const auto doubled = Pixels::painted(label);
    label.UseMnemonic(false);
    label.Caption(QStringLiteral("A & B"));
    QCOMPARE(Pixels::painted(label), doubled);
}

void TestLabelLines::drawsTextFromRightToLeft()
{
    KelLabel label;
    prepare(label, "שלום");
    const auto left = Pixels::inkBox(Pixels::painted(label));
    label.Alignment(1);
    const auto right = Pixels::inkBox(Pixels::painted(label));
    QVERIFY(!left.isEmpty());
    QVERIFY(left.left() <= 3);
    QVERIFY(right.right() >= Width - 4);
    label.WordWrap(true);
    QCOMPARE(Pixels::inkBox(Pixels::painted(label)), right);
}

QTEST_MAIN(TestLabelLines)
#include "tst_label_lines.moc"
