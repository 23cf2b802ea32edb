#include "SkinText.h"
#include "skin/PictureLoader.h"
#include "skin/PointReader.h"
#include "skin/SvgProcess.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <QTest>
#include <QtEndian>

using namespace Quorlin;

namespace {

QByteArray encoded(const char *format, int width = 12, int height = 9)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    static_cast<void>(buffer.open(QIODevice::WriteOnly));
    QImageWriter(&buffer, format).write(image);
    return buffer.data();
}

/// The smallest GIF: one red point on a screen of 12 by 9.
QByteArray gif()
{
    return QByteArray::fromHex(
        "47494638396103000200910000ff0000ffffff00000000000021f90404000000002c"
        "00000000030002000002028c0d003b");
}

QByteArray svg(const QByteArray &inside = "<rect width='12' height='9' fill='#f00'/>")
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
           "width='12' height='9'>" +
           inside + "</svg>";
}

/// A PNG whose header tells of a size that its data does not have.
QByteArray pngThatClaims(quint32 width, quint32 height)
{
    auto png = pngOf(12, 9);
    qToBigEndian(width, png.data() + 16);
    qToBigEndian(height, png.data() + 20);
    quint32 crc = 0xFFFFFFFF;
    for (const auto byte : png.mid(12, 17)) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    qToBigEndian(~crc, png.data() + 29);
    return png;
}

std::shared_ptr<SvgProcess> realDrawings(const SvgProcess::Limits &limits = {})
{
    return std::make_shared<SvgProcess>(QStringLiteral(QUORLIN_BIN_DIR "/quorlin-svg"), limits);
}

QSize sizeOfLoaded(const PictureLoader &loader, const TestFolder &folder, const char *name)
{
    const auto picture = loader.load(folder.path(), QString::fromUtf8(name));
    return picture ? picture->logicalSize() : QSize();
}

bool loads(const TestFolder &folder, const char *name)
{
    return sizeOfLoaded(PictureLoader(), folder, name).isValid();
}

} // namespace

class TestSkinPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsPicturesByTheirContent_data();
    void loadsPicturesByTheirContent();
    void otherFormatsAreRefused_data();
    void otherFormatsAreRefused();
    void firstPictureOfAGifCounts();
    void filesOutsideOfTheSkinAreRefused_data();
    void filesOutsideOfTheSkinAreRefused();
    void linkWithinTheSkinIsFollowed();
    void pipesAndFoldersAreRefusedAtOnce();
    void fileInASubfolderIsFound();
    void caseDoesNotCount();
    void fileAbove32MiBIsRefused();
    void damagedPictureIsRefused();
    void absurdSizeIsRefusedFromTheHeader_data();
    void absurdSizeIsRefusedFromTheHeader();

    void densePictureServesDenseScreens();
    void densePictureThatIsDamagedIsLeftOut();
    void drawsWhatFitsTheDevice_data();
    void drawsWhatFitsTheDevice();
    void emptyPictureDrawsNothing();
    void copiesShareWhatTheyHold();
};

void TestSkinPicture::loadsPicturesByTheirContent_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QSize>("size");
    for (const auto *format : {"bmp", "ico", "jpeg", "png"})
        QTest::newRow(format) << encoded(format) << QSize(12, 9);
    QTest::newRow("gif") << gif() << QSize(3, 2);
    QTest::newRow("svg") << svg() << QSize(12, 9);
}

void TestSkinPicture::loadsPicturesByTheirContent()
{
    QFETCH(const QByteArray, content);
    const TestFolder folder;
    folder.write("a.bin", content);
    QTEST(sizeOfLoaded(PictureLoader(realDrawings()), folder, "a.bin"), "size");
}

void TestSkinPicture::otherFormatsAreRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("ppm") << encoded("ppm");
    QTest::newRow("xpm") << encoded("xpm");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("text") << QByteArray("Main.png");
    QTest::newRow("compressed svg") << QByteArray::fromHex("1f8b0800000000000003");
    QTest::newRow("wmf without its size") << QByteArray::fromHex("010009000003");
    QTest::newRow("html") << QByteArray("<html/>");
}

void TestSkinPicture::otherFormatsAreRefused()
{
    QFETCH(const QByteArray, content);
    const TestFolder folder;
    folder.write("a.png", content);
    QVERIFY(!loads(folder, "a.png"));
}

void TestSkinPicture::firstPictureOfAGifCounts()
{
    const auto image = PointReader::read(gif(), PictureFormat::Gif);
    QCOMPARE(image.size(), QSize(3, 2));
}

void TestSkinPicture::filesOutsideOfTheSkinAreRefused_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("above") << QByteArray("../secret.png");
    QTest::newRow("above, other separator") << QByteArray("..\\secret.png");
    QTest::newRow("by a way around") << QByteArray("sub/../../secret.png");
    QTest::newRow("absolute") << QByteArray("ABSOLUTE");
    QTest::newRow("link to a file") << QByteArray("link.png");
    QTest::newRow("link to a folder") << QByteArray("folder/secret.png");
    QTest::newRow("link in a circle") << QByteArray("circle.png");
    QTest::newRow("address") << QByteArray("file:secret.png");
    QTest::newRow("resource") << QByteArray(":/secret.png");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("point") << QByteArray(".");
    QTest::newRow("zero") << QByteArray("in.png\0", 7);
    QTest::newRow("long") << QByteArray(100000, 'x');
    QTest::newRow("deep") << QByteArray("sub/").repeated(20000);
}

void TestSkinPicture::filesOutsideOfTheSkinAreRefused()
{
    QFETCH(QByteArray, value);
    const TestFolder folder;
    const auto secret = folder.write("secret.png", pngOf(12, 9));
    folder.write("skin/in.png", pngOf(12, 9));
    folder.makeFolder("skin/sub");
    QVERIFY(QFile::link(secret, folder.path("skin/link.png")));
    QVERIFY(QFile::link(folder.path(), folder.path("skin/folder")));
    QVERIFY(QFile::link(QStringLiteral("circle.png"), folder.path("skin/circle.png")));
    if (value == "ABSOLUTE")
        value = secret.toUtf8();
    const PictureLoader loader;
    QVERIFY(loader.load(folder.path("skin"), QStringLiteral("in.png")));
    QVERIFY(!loader.load(folder.path("skin"), QString::fromUtf8(value)));
}

void TestSkinPicture::linkWithinTheSkinIsFollowed()
{
    const TestFolder folder;
    folder.write("in.png", pngOf(12, 9));
    QVERIFY(QFile::link(QStringLiteral("in.png"), folder.path("link.png")));
    QVERIFY(loads(folder, "link.png"));
}

void TestSkinPicture::pipesAndFoldersAreRefusedAtOnce()
{
    const TestFolder folder;
    QVERIFY(SystemActions::makeFifo(folder.path("pipe.png")));
    QVERIFY(QFile::link(SystemActions::nullDevice(), folder.path("device.png")));
    folder.makeFolder("folder.png");
    folder.write("a.png", pngOf(12, 9));
    QVERIFY(SystemActions::makeFifo(folder.path("a@2x.png")));
    QVERIFY(!loads(folder, "pipe.png"));
    QVERIFY(!loads(folder, "device.png"));
    QVERIFY(!loads(folder, "folder.png"));
    QVERIFY(loads(folder, "a.png"));
}

void TestSkinPicture::fileInASubfolderIsFound()
{
    const TestFolder folder;
    folder.write("sub/in.png", pngOf(12, 9));
    QVERIFY(loads(folder, "sub/in.png"));
    QVERIFY(loads(folder, "sub\\in.png"));
}

void TestSkinPicture::caseDoesNotCount()
{
    const TestFolder folder;
    folder.write("Main.PNG", pngOf(12, 9));
    QVERIFY(loads(folder, "main.png"));
    folder.write("main.png", pngOf(5, 5));
    QCOMPARE(sizeOfLoaded(PictureLoader(), folder, "main.png"), QSize(5, 5));
}

void TestSkinPicture::fileAbove32MiBIsRefused()
{
    const TestFolder folder;
    folder.write("a.png", pngOf(12, 9) + QByteArray(PointReader::MostBytes, '\0'));
    QVERIFY(!loads(folder, "a.png"));
}

void TestSkinPicture::damagedPictureIsRefused()
{
    const TestFolder folder;
    const auto png = pngOf(200, 200);
    folder.write("cut.png", png.left(png.size() / 2));
    folder.write("head.png", png.left(20));
    folder.write("cut.bmp", encoded("bmp").left(30));
    folder.write("cut.ico", encoded("ico").left(30));
    folder.write("cut.gif", gif().left(12));
    for (const auto *name : {"cut.png", "head.png", "cut.bmp", "cut.ico", "cut.gif"})
        QVERIFY2(!loads(folder, name), name);
}

void TestSkinPicture::absurdSizeIsRefusedFromTheHeader_data()
{
    QTest::addColumn<uint>("width");
    QTest::addColumn<uint>("height");
    QTest::newRow("decompression bomb") << 30000U << 30000U;
    QTest::newRow("too many points") << 16384U << 4097U;
    QTest::newRow("too wide") << 16385U << 1U;
    QTest::newRow("too high") << 1U << 16385U;
    QTest::newRow("largest number") << 0x7FFFFFFFU << 0x7FFFFFFFU;
    QTest::newRow("negative number") << 0xFFFFFFFFU << 9U;
    QTest::newRow("nothing") << 0U << 0U;
}

void TestSkinPicture::absurdSizeIsRefusedFromTheHeader()
{
    QFETCH(const uint, width);
    QFETCH(const uint, height);
    const auto png = pngThatClaims(width, height);
    QVERIFY(!PointReader::sizeOf(png, PictureFormat::Png).isValid());
    QVERIFY(PointReader::read(png, PictureFormat::Png).isNull());
    QVERIFY(!PointReader::read(pngThatClaims(12, 9), PictureFormat::Png).isNull());
}

void TestSkinPicture::densePictureServesDenseScreens()
{
    const TestFolder folder;
    folder.write("a.png", pngOf(12, 9));
    folder.write("a@2x.png", pngOf(24, 18));
    const auto picture = PictureLoader().load(folder.path(), QStringLiteral("a.png"));
    QVERIFY(picture);
    QCOMPARE(picture->logicalSize(), QSize(12, 9));
    QCOMPARE(picture->imageFor({12, 9}).size(), QSize(12, 9));
    QCOMPARE(picture->imageFor({6, 4}).size(), QSize(12, 9));
    QCOMPARE(picture->imageFor({15, 11}).size(), QSize(24, 18));
    QCOMPARE(picture->imageFor({24, 18}).size(), QSize(24, 18));
    QCOMPARE(picture->imageFor({100, 100}).size(), QSize(24, 18));
}

void TestSkinPicture::densePictureThatIsDamagedIsLeftOut()
{
    const TestFolder folder;
    const auto dense = pngOf(240, 180);
    folder.write("a.png", pngOf(120, 90));
    for (const auto &content : {dense.left(60), QByteArray("x"), pngThatClaims(30000, 30000)}) {
        folder.write("a@2x.png", content);
        const auto picture = PictureLoader().load(folder.path(), QStringLiteral("a.png"));
        QVERIFY(picture);
        QCOMPARE(picture->imageFor({240, 180}).size(), QSize(120, 90));
    }
}

void TestSkinPicture::drawsWhatFitsTheDevice_data()
{
    QTest::addColumn<double>("density");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("plain") << 1.0 << QColor(Qt::red);
    QTest::newRow("between") << 1.5 << QColor(Qt::blue);
    QTest::newRow("double") << 2.0 << QColor(Qt::blue);
    QTest::newRow("more") << 3.0 << QColor(Qt::blue);
}

void TestSkinPicture::drawsWhatFitsTheDevice()
{
    QFETCH(const double, density);
    QFETCH(const QColor, colour);
    QImage plain(12, 9, QImage::Format_RGB32);
    plain.fill(Qt::red);
    const auto picture = SkinPicture::ofPoints(plain, pngOf(24, 18, Qt::blue));
    QImage canvas(QSize(20, 20) * density, QImage::Format_RGB32);
    canvas.setDevicePixelRatio(density);
    canvas.fill(Qt::white);
    QPainter painter(&canvas);
    picture.draw(painter, QRectF(4, 4, 12, 9));
    painter.end();
    QCOMPARE(canvas.pixelColor(QPointF(10 * density, 8 * density).toPoint()), colour);
    QCOMPARE(canvas.pixelColor(QPointF(2 * density, 8 * density).toPoint()), QColor(Qt::white));
    QCOMPARE(canvas.pixelColor(QPointF(18 * density, 8 * density).toPoint()), QColor(Qt::white));
}

void TestSkinPicture::emptyPictureDrawsNothing()
{
    QImage canvas(4, 4, QImage::Format_RGB32);
    canvas.fill(Qt::white);
    const auto before = canvas.copy();
    QPainter painter(&canvas);
    SkinPicture().draw(painter, QRectF(0, 0, 4, 4));
    painter.end();
    QCOMPARE(canvas, before);
    QVERIFY(SkinPicture().isEmpty());
    QVERIFY(SkinPicture::ofPoints(QImage()).isEmpty());
    QVERIFY(SkinPicture().imageFor({4, 4}).isNull());
}

void TestSkinPicture::copiesShareWhatTheyHold()
{
    const auto picture = SkinPicture::ofPoints(QImage(4, 4, QImage::Format_RGB32));
    const auto copy = QVariant::fromValue(picture).value<SkinPicture>();
    QVERIFY(copy == picture);
    QVERIFY(!(copy == SkinPicture()));
    QVERIFY(SkinPicture() == SkinPicture());
}

QTEST_MAIN(TestSkinPicture)
#include "tst_skinpicture.moc"
