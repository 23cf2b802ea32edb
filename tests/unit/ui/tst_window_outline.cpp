#include "ui/SkinnedWindow.h"

#include <QPainter>
#include <QTest>

using namespace Quorlin;

/// Where a window is, and where what lies behind it is.
class TestWindowOutline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsThePictureAtEveryWidth_data();
    void followsThePictureAtEveryWidth();
    void softEdgesBelongToTheWindow();
    void followsAnotherPicture();
    void followsAnotherSize();
    void withoutAPictureTheWindowIsARectangle();
};

namespace {

constexpr int Corner = 10;

/// Transparent in a square at the upper left.
SkinPicture pictureOf(const QSize &size, int alphaOfCorner = 0)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::blue);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(0, 0, Corner, Corner, QColor(0, 0, 255, alphaOfCorner));
    painter.end();
    return SkinPicture::ofPoints(image);
}

QRegion withoutCorner(const QSize &size, const QSize &corner = {Corner, Corner})
{
    return QRegion(QRect({}, size)) - QRegion(QRect({}, corner));
}

} // namespace

/// Widths around whole bytes and whole words of a line of bits.
void TestWindowOutline::followsThePictureAtEveryWidth_data()
{
    QTest::addColumn<int>("width");
    for (const auto width : {100, 257, 288, 499, 500, 501, 504, 512, 560})
        QTest::addRow("%d", width) << width;
}

void TestWindowOutline::followsThePictureAtEveryWidth()
{
    QFETCH(int, width);
    SkinnedWindow window;
    window.resize(width, 80);
    window.Picture(pictureOf(window.size()));
    window.show();
    QCOMPARE(window.mask(), withoutCorner(window.size()));
}

void TestWindowOutline::softEdgesBelongToTheWindow()
{
    SkinnedWindow window;
    window.resize(100, 80);
    window.Picture(pictureOf(window.size(), 3));
    window.show();
    QCOMPARE(window.mask(), QRegion(window.rect()));
}

void TestWindowOutline::followsAnotherPicture()
{
    SkinnedWindow window;
    window.resize(100, 80);
    window.Picture(pictureOf(window.size(), 255));
    window.show();
    window.Picture(pictureOf(window.size()));
    QCOMPARE(window.mask(), withoutCorner(window.size()));
}

void TestWindowOutline::followsAnotherSize()
{
    SkinnedWindow window;
    window.resize(100, 80);
    window.Picture(pictureOf(window.size()));
    window.show();
    window.resize(200, 160);
    QCOMPARE(window.mask().boundingRect(), window.rect());
    QVERIFY(!window.mask().contains(QPoint(2 * Corner - 2, 2 * Corner - 2)));
    QVERIFY(window.mask().contains(QPoint(2 * Corner + 1, 2 * Corner + 1)));
}

void TestWindowOutline::withoutAPictureTheWindowIsARectangle()
{
    SkinnedWindow window;
    window.resize(100, 80);
    window.Picture(pictureOf(window.size()));
    window.show();
    window.Picture({});
    QVERIFY(window.mask().isEmpty());
}

QTEST_MAIN(TestWindowOutline)
#include "tst_window_outline.moc"
