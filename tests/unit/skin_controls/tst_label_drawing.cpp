#include "skin/controls/KelLabel.h"

#include "LabelSample.h"
#include "Pixels.h"

#include <QTest>

using namespace Quorlin;
using namespace LabelSample;

namespace {

constexpr quint32 Red = 0x0000FF;
constexpr quint32 Blue = 0xFF0000;
constexpr quint32 Yellow = 0x00FFFF;

/// Where the ink of a text lies whose place follows the rules.
QRect expectedInk(const KelLabel &label, int margin)
{
    const QFontMetricsF metrics(label.Font());
    const QSize extent(qCeil(metrics.horizontalAdvance(label.Caption())), qCeil(metrics.height()));
    const auto placed = [margin](qint32 alignment, int whole, int length) {
        if (alignment == 0)
            return margin;
        return alignment == 1 ? whole - length - margin : (whole - length) / 2;
    };
    const auto left = placed(label.Alignment(), label.width(), extent.width());
    const auto top = placed(label.VerticalAlignment(), label.height(), extent.height());
    return metrics.tightBoundingRect(label.Caption())
        .translated(left, top + metrics.ascent())
        .toAlignedRect();
}

bool isWithinAPixel(const QRect &one, const QRect &other)
{
    return qAbs(one.left() - other.left()) <= 1 && qAbs(one.top() - other.top()) <= 1 &&
           qAbs(one.right() - other.right()) <= 1 && qAbs(one.bottom() - other.bottom()) <= 1;
}

QByteArray described(const QRect &one, const QRect &other)
{
    QString text;
    QDebug(&text) << one << other;
    return text.toUtf8();
}

} // namespace

class TestLabelDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placesTheText_data();
    void placesTheText();
    void centersTheTextForAnyOtherAlignment_data();
    void centersTheTextForAnyOtherAlignment();
    void keepsAMarginOfTheBordersWidth_data();
    void keepsAMarginOfTheBordersWidth();
    void drawsOnlyBackgroundAndBorderForAnEmptyCaption();
    void drawsNothingForAnEmptyTransparentLabel();
    void letsWhatLiesBehindShowThrough();
    void fillsTheBackground();
    void drawsAFlatBorder();
    void drawsASunkenBorder();
    void drawsItsEdgesOnWholePixels_data();
    void drawsItsEdgesOnWholePixels();
    void drawsTheTextInItsColor();
    void drawsADisabledTextHalfThrough();
    void drawsADisabledTextInAColorOfItsOwn();
    void drawsNothingOutsideItsBorder();
    void showsTheFocusAndTheMouseOnlyWhenClickable();
};

void TestLabelDrawing::placesTheText_data()
{
    QTest::addColumn<int>("across");
    QTest::addColumn<int>("down");
    for (const auto across : {0, 1, 2}) {
        for (const auto down : {0, 1, 2})
            QTest::addRow("%d %d", across, down) << across << down;
    }
}

void TestLabelDrawing::placesTheText()
{
    QFETCH(int, across);
    QFETCH(int, down);
    KelLabel label;
    prepare(label);
    label.Alignment(across);
    label.VerticalAlignment(down);
    const auto ink = Pixels::inkBox(Pixels::painted(label));
    const auto expected = expectedInk(label, 0);
    QVERIFY2(isWithinAPixel(ink, expected), described(ink, expected));
}

void TestLabelDrawing::centersTheTextForAnyOtherAlignment_data()
{
    QTest::addColumn<int>("alignment");
    for (const auto alignment : {3, 7, -1, 65536, INT_MIN})
        QTest::addRow("%d", alignment) << alignment;
}

void TestLabelDrawing::centersTheTextForAnyOtherAlignment()
{
    QFETCH(int, alignment);
    KelLabel label;
    prepare(label);
    label.Alignment(2);
    label.VerticalAlignment(2);
    const auto centered = Pixels::painted(label);
    label.Alignment(alignment);
    label.VerticalAlignment(alignment);
    QCOMPARE(Pixels::painted(label), centered);
}

void TestLabelDrawing::keepsAMarginOfTheBordersWidth_data()
{
    QTest::addColumn<int>("appearance");
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("margin");
    for (const auto alignment : {0, 1, 2}) {
        QTest::addRow("flat %d", alignment) << 0 << alignment << 1;
        QTest::addRow("sunken %d", alignment) << 1 << alignment << 2;
    }
}

void TestLabelDrawing::keepsAMarginOfTheBordersWidth()
{
    QFETCH(int, appearance);
    QFETCH(int, alignment);
    QFETCH(int, margin);
    KelLabel label;
    prepare(label);
    label.BorderStyle(1);
    label.BorderColor(0xFFFFFF);
    label.Appearance(appearance);
    label.Alignment(alignment);
    label.VerticalAlignment(alignment);
    const auto ink = Pixels::inkBox(Pixels::painted(label));
    const auto expected = expectedInk(label, margin);
    QVERIFY2(isWithinAPixel(ink, expected), described(ink, expected));
}

void TestLabelDrawing::drawsOnlyBackgroundAndBorderForAnEmptyCaption()
{
    KelLabel label;
    prepare(label, "");
    label.BackStyle(1);
    label.BackColor(Yellow);
    label.BorderStyle(1);
    label.BorderColor(Blue);
    const auto image = Pixels::painted(label);
    const auto border = 2 * Width + 2 * (Height - 2);
    QCOMPARE(Pixels::countOf(image, Qt::blue), border);
    QCOMPARE(Pixels::countOf(image, Qt::yellow), Width * Height - border);
}

void TestLabelDrawing::drawsNothingForAnEmptyTransparentLabel()
{
    KelLabel label;
    prepare(label, "");
    QCOMPARE(Pixels::inkBox(Pixels::painted(label)), QRect());
}

void TestLabelDrawing::letsWhatLiesBehindShowThrough()
{
    KelLabel label;
    prepare(label);
    label.BackColor(Red);
    const auto image = Pixels::painted(label, Qt::green);
    QCOMPARE(Pixels::countOf(image, Qt::red), 0);
    QVERIFY(Pixels::countOf(image, Qt::green) > Width * Height * 8 / 10);
}

void TestLabelDrawing::fillsTheBackground()
{
    KelLabel label;
    prepare(label);
    label.BackStyle(1);
    label.BackColor(Red);
    const auto image = Pixels::painted(label, Qt::green);
    QCOMPARE(Pixels::countOf(image, Qt::green), 0);
    QVERIFY(Pixels::countOf(image, Qt::red) > Width * Height * 8 / 10);
}

void TestLabelDrawing::drawsAFlatBorder()
{
    KelLabel label;
    prepare(label, "");
    label.BorderStyle(1);
    label.BorderColor(Red);
    const auto image = Pixels::painted(label);
    QCOMPARE(Pixels::countOf(image, Qt::red), 2 * Width + 2 * (Height - 2));
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::red));
    QCOMPARE(image.pixelColor(Width - 1, Height - 1), QColor(Qt::red));
    QCOMPARE(image.pixelColor(1, 1), QColor(Qt::white));
}

void TestLabelDrawing::drawsASunkenBorder()
{
    KelLabel label;
    prepare(label, "");
    label.BorderStyle(1);
    label.Appearance(1);
    label.BorderColor(Red);
    const auto image = Pixels::painted(label);
    QCOMPARE(image.pixelColor(1, 1), QColor(Qt::red));
    const auto lit = image.pixelColor(Width - 2, Height - 2);
    QVERIFY(lit != QColor(Qt::red) && lit != QColor(Qt::white));
    QCOMPARE(image.pixelColor(2, 2), QColor(Qt::white));
    QCOMPARE(image.pixelColor(Width - 3, Height - 3), QColor(Qt::white));
}

void TestLabelDrawing::drawsItsEdgesOnWholePixels_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("line");
    QTest::newRow("100 %") << 1.0 << 1;
    QTest::newRow("125 %") << 1.25 << 1;
    QTest::newRow("150 %") << 1.5 << 1;
    QTest::newRow("200 %") << 2.0 << 2;
}

void TestLabelDrawing::drawsItsEdgesOnWholePixels()
{
    QFETCH(double, scale);
    QFETCH(int, line);
    QWidget window;
    window.resize(100, 100);
    KelLabel label(&window);
    label.setGeometry(13, 7, 51, 33);
    label.BackStyle(1);
    label.BackColor(Yellow);
    label.BorderStyle(1);
    label.BorderColor(Blue);
    const auto image = Pixels::painted(window, Qt::white, scale);
    const auto box = Pixels::inkBox(image);
    const auto inner = box.adjusted(line, line, -line, -line);
    QCOMPARE(Pixels::countOf(image, Qt::yellow), inner.width() * inner.height());
    QCOMPARE(Pixels::countOf(image, Qt::blue),
             box.width() * box.height() - inner.width() * inner.height());
    QVERIFY(qAbs(box.width() - 51 * scale) < 1);
    QVERIFY(qAbs(box.height() - 33 * scale) < 1);
}

void TestLabelDrawing::drawsTheTextInItsColor()
{
    KelLabel label;
    prepare(label);
    label.TextColor(Blue);
    const auto image = Pixels::painted(label);
    QVERIFY(Pixels::countOf(image, Qt::blue) > 10);
    QCOMPARE(Pixels::countOf(image, Qt::black), 0);
}

void TestLabelDrawing::drawsADisabledTextHalfThrough()
{
    for (const auto &background : {QColor(Qt::white), QColor(Qt::black)}) {
        KelLabel label;
        prepare(label);
        label.TextColor(background == QColor(Qt::white) ? 0 : 0xFFFFFF);
        const auto enabled = Pixels::strongest(Pixels::painted(label, background), background);
        label.Enabled(false);
        const auto disabled = Pixels::strongest(Pixels::painted(label, background), background);
        QVERIFY(disabled.contrast < enabled.contrast);
        QVERIFY2(disabled.contrast > 3, qPrintable(QString::number(disabled.contrast)));
    }
}

void TestLabelDrawing::drawsADisabledTextInAColorOfItsOwn()
{
    KelLabel label;
    prepare(label);
    label.DisabledTextColor(Red);
    QCOMPARE(Pixels::countOf(Pixels::painted(label), Qt::red), 0);
    label.Enabled(false);
    QVERIFY(Pixels::countOf(Pixels::painted(label), Qt::red) > 10);
}

void TestLabelDrawing::drawsNothingOutsideItsBorder()
{
    QWidget window;
    window.resize(200, 100);
    KelLabel label(&window);
    prepare(label, "ÅÅÅ several words\nthat have\nno room\nat all");
    label.setGeometry(50, 30, 60, 20);
    QVERIFY(label.geometry().contains(Pixels::inkBox(Pixels::painted(window))));
}

void TestLabelDrawing::showsTheFocusAndTheMouseOnlyWhenClickable()
{
    KelLabel label;
    prepare(label);
    label.show();
    label.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&label));
    const auto plain = Pixels::painted(label);
    label.setFocus();
    QCOMPARE(Pixels::painted(label), plain);
    label.clearFocus();
    label.Clickable(true);
    QCOMPARE(label.cursor().shape(), Qt::PointingHandCursor);
    label.setFocus();
    const auto focused = Pixels::painted(label);
    QCOMPARE(Pixels::inkBox(focused), label.rect());
    QTest::mousePress(&label, Qt::LeftButton);
    const auto held = Pixels::painted(label);
    QVERIFY(held != focused);
    QTest::mouseRelease(&label, Qt::LeftButton);
    label.Enabled(false);
    QVERIFY(Pixels::inkBox(Pixels::painted(label)) != label.rect());
}

QTEST_MAIN(TestLabelDrawing)
#include "tst_label_drawing.moc"
