#include "SkinText.h"
#include "skin/MetafileCache.h"
#include "skin/PictureLoader.h"
#include "skin/PointReader.h"
#include "skin/SvgCheck.h"
#include "skin/SvgProcess.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImageWriter>
#include <QPainter>
#include <QTest>
#include <QTimer>
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

/// Renders every metafile as what it is told, and counts.
class StandInMetafiles : public MetafileRenderer
{
public:
    explicit StandInMetafiles(const QByteArray &png) : result(png) {}
    [[nodiscard]] QByteArray render(const QByteArray & /*content*/,
                                    PictureFormat format) const override
    {
        formats.append(format);
        return result;
    }

    QByteArray result;
    mutable QList<PictureFormat> formats;
};

QSize sizeOfLoaded(const PictureLoader &loader, const TestFolder &folder, const char *name)
{
    const auto picture = loader.load(folder.path(), QString::fromUtf8(name));
    return picture ? picture->logicalSize() : QSize();
}

bool loads(const TestFolder &folder, const char *name)
{
    return sizeOfLoaded(PictureLoader(), folder, name).isValid();
}

const QByteArray Wmf = QByteArray::fromHex("d7cdc69a0000");
const QByteArray Emf = QByteArray::fromHex("01000000") + QByteArray(36, '\0') + " EMF\0";

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

    void drawingIsRenderedAtEveryDensity();
    void drawingNeedsARenderer();
    void drawingThatReachesOutIsRefused_data();
    void drawingThatReachesOutIsRefused();
    void ordinaryDrawingsAreAccepted_data();
    void ordinaryDrawingsAreAccepted();
    void drawingOfManyOrDeepElementsIsRefused();
    void slowDrawingIsGivenUp();
    void eventsGoOnWhileADrawingIsRendered();
    void brokenRendererMakesNoPicture();

    void metafileIsGivenToTheRenderer();
    void metafileThatCannotBeRenderedIsRefused();
    void metafileIsRenderedOnce();
    void damagedFileOfTheCacheIsMadeAnew();
    void cacheIsBounded();
    void cacheThatCannotBeWrittenDoesNotMatter();
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

void TestSkinPicture::drawingIsRenderedAtEveryDensity()
{
    const TestFolder folder;
    folder.write("a.svg", svg());
    const auto picture = PictureLoader(realDrawings()).load(folder.path(), QStringLiteral("a.svg"));
    QVERIFY(picture);
    QCOMPARE(picture->imageFor({15, 11}).size(), QSize(15, 11));
    const auto image = picture->imageFor({36, 27});
    QCOMPARE(image.size(), QSize(36, 27));
    QCOMPARE(image.pixelColor(18, 13), QColor(Qt::red));
}

void TestSkinPicture::drawingNeedsARenderer()
{
    const TestFolder folder;
    folder.write("a.svg", svg());
    QVERIFY(!loads(folder, "a.svg"));
}

void TestSkinPicture::drawingThatReachesOutIsRefused_data()
{
    QTest::addColumn<QByteArray>("drawing");
    QTest::newRow("image file") << svg("<image xlink:href='secret.png' width='9' height='9'/>");
    QTest::newRow("image with data") << svg("<image xlink:href='data:image/png;base64,AAAA'/>");
    QTest::newRow("image by a part's name") << svg("<image xlink:href='#/../../secret.png'/>");
    QTest::newRow("image of another prefix")
        << svg("<g xmlns:q='http://www.w3.org/2000/svg'><q:image/></g>");
    QTest::newRow("use of a file") << svg("<use xlink:href='other.svg#a'/>");
    QTest::newRow("plain href") << svg("<use href='/etc/hostname'/>");
    QTest::newRow("style import") << svg("<style>@import 'a.css';</style>");
    QTest::newRow("style address") << svg("<style>rect{fill:url( \"file:///a\" )}</style>");
    QTest::newRow("attribute address") << svg("<rect fill='url(other.svg#a)'/>");
    QTest::newRow("escaped address") << svg("<rect fill='u\\72l(other.svg#a)'/>");
    QTest::newRow("style sheet") << QByteArray("<?xml version='1.0'?><?xml-stylesheet "
                                               "type=\"text/css\" href=\"a.css\"?>") +
                                        svg();
    QTest::newRow("entities") << QByteArray("<!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b "
                                            "'&a;&a;&a;&a;&a;&a;&a;&a;'>]>") +
                                     svg("<text>&b;</text>");
    QTest::newRow("entity of a file")
        << QByteArray("<!DOCTYPE svg [<!ENTITY a SYSTEM 'file:///etc/hostname'>]>") +
               svg("<text>&a;</text>");
    QTest::newRow("not closed") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg'><g>");
    QTest::newRow("another root") << QByteArray("<?xml version='1.0'?><html/>");
    QTest::newRow("no element") << QByteArray("<!-- -->");
}

void TestSkinPicture::drawingThatReachesOutIsRefused()
{
    QFETCH(const QByteArray, drawing);
    QVERIFY(!SvgCheck::isHarmless(drawing));
    const TestFolder folder;
    folder.write("a.svg", drawing);
    folder.write("secret.png", pngOf(9, 9));
    QVERIFY(!sizeOfLoaded(PictureLoader(realDrawings()), folder, "a.svg").isValid());
}

void TestSkinPicture::ordinaryDrawingsAreAccepted_data()
{
    QTest::addColumn<QByteArray>("drawing");
    QTest::newRow("gradient") << svg(
        "<defs><linearGradient id='a'><stop offset='0' stop-color='#fff'/>"
        "</linearGradient></defs><rect width='9' height='9' fill='url(#a)'/>");
    QTest::newRow("use") << svg("<g id='a'><path d='M0 0h9v9z'/></g><use xlink:href='#a'/>");
    QTest::newRow("text") << svg("<text x='1' y='9' font-size='8'>curl (a)</text>");
    QTest::newRow("declaration") << QByteArray("\xEF\xBB\xBF<?xml version='1.0'?>\n") + svg();
    QTest::newRow("comment") << QByteArray("<!-- Drawn by hand -->\n") + svg();
}

void TestSkinPicture::ordinaryDrawingsAreAccepted()
{
    QFETCH(const QByteArray, drawing);
    const TestFolder folder;
    folder.write("a.svg", drawing);
    QVERIFY(sizeOfLoaded(PictureLoader(realDrawings()), folder, "a.svg").isValid());
}

void TestSkinPicture::drawingOfManyOrDeepElementsIsRefused()
{
    QVERIFY(SvgCheck::isHarmless(svg(QByteArray("<g/>").repeated(10000))));
    QVERIFY(!SvgCheck::isHarmless(svg(QByteArray("<g/>").repeated(30000))));
    const auto deep = [](int depth) {
        return svg(QByteArray("<g>").repeated(depth) + QByteArray("</g>").repeated(depth));
    };
    QVERIFY(SvgCheck::isHarmless(deep(90)));
    QVERIFY(!SvgCheck::isHarmless(deep(200)));
    QVERIFY(!SvgCheck::isHarmless(svg(QByteArray(SvgCheck::MostBytes, ' '))));
}

/// A renderer that does not end is ended, and with it what it has started.
void TestSkinPicture::slowDrawingIsGivenUp()
{
    const TestFolder folder;
    const auto slow = folder.write("slow", "#!/bin/sh\nsleep 100 & echo $! > \"$0.pid\"; wait\n");
    QVERIFY(QFile::setPermissions(slow, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    using namespace std::chrono_literals;
    const SvgProcess renderer(slow, {700ms, 700ms});
    for (const auto waiting : {Waiting::WithEvents, Waiting::Still}) {
        QElapsedTimer timer;
        timer.start();
        QVERIFY(renderer.render(svg(), {}, waiting).isNull());
        QVERIFY(timer.elapsed() < 10000);
        const auto child = contentOf(folder.path("slow.pid")).trimmed().toLongLong();
        QVERIFY(child > 1);
        QTRY_VERIFY(!SystemActions::isRunning(child));
    }
}

void TestSkinPicture::eventsGoOnWhileADrawingIsRendered()
{
    const TestFolder folder;
    folder.write("a.svg", svg());
    int events = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&events] { ++events; });
    timer.start(0);
    QVERIFY(sizeOfLoaded(PictureLoader(realDrawings()), folder, "a.svg").isValid());
    QVERIFY(events > 0);
}

void TestSkinPicture::brokenRendererMakesNoPicture()
{
    for (const auto *program : {"/nowhere/quorlin-svg", "/bin/true", "/bin/false"}) {
        const SvgProcess renderer(QString::fromLatin1(program));
        QVERIFY(renderer.render(svg(), {}, Waiting::WithEvents).isNull());
        QVERIFY(renderer.render(svg(), {24, 18}, Waiting::Still).isNull());
    }
}

void TestSkinPicture::metafileIsGivenToTheRenderer()
{
    const TestFolder folder;
    folder.write("a.wmf", Wmf);
    folder.write("a.emf", Emf);
    const auto renderer = std::make_shared<StandInMetafiles>(pngOf(12, 9));
    const PictureLoader loader({}, renderer);
    QCOMPARE(sizeOfLoaded(loader, folder, "a.wmf"), QSize(12, 9));
    QCOMPARE(sizeOfLoaded(loader, folder, "a.emf"), QSize(12, 9));
    QCOMPARE(renderer->formats, QList({PictureFormat::Wmf, PictureFormat::Emf}));
}

void TestSkinPicture::metafileThatCannotBeRenderedIsRefused()
{
    const TestFolder folder;
    folder.write("a.wmf", Wmf);
    QVERIFY(!loads(folder, "a.wmf"));
    const PictureLoader loader({}, std::make_shared<StandInMetafiles>("damaged"));
    QVERIFY(!sizeOfLoaded(loader, folder, "a.wmf").isValid());
}

void TestSkinPicture::metafileIsRenderedOnce()
{
    const TestFolder folder;
    const StandInMetafiles renderer(pngOf(12, 9));
    const MetafileCache cache(folder.path("cache"), renderer);
    const auto first = cache.render(Wmf, PictureFormat::Wmf);
    QCOMPARE(first, renderer.result);
    QCOMPARE(cache.render(Wmf, PictureFormat::Wmf), first);
    QCOMPARE(renderer.formats.size(), 1);
    QCOMPARE(cache.render(Emf, PictureFormat::Emf), first);
    QCOMPARE(renderer.formats.size(), 2);
}

void TestSkinPicture::damagedFileOfTheCacheIsMadeAnew()
{
    const TestFolder folder;
    const StandInMetafiles renderer(pngOf(12, 9));
    const MetafileCache cache(folder.path("cache"), renderer);
    QVERIFY(!cache.render(Wmf, PictureFormat::Wmf).isEmpty());
    const auto name = "cache/" + namesIn(folder.path("cache")).first().toLatin1();
    folder.write(name.constData(), renderer.result.left(40));
    QCOMPARE(cache.render(Wmf, PictureFormat::Wmf), renderer.result);
    QCOMPARE(contentOf(folder.path(name.constData())), renderer.result);
    QCOMPARE(renderer.formats.size(), 2);
    QVERIFY(QFile::remove(folder.path(name.constData())));
    QVERIFY(SystemActions::makeFifo(folder.path(name.constData())));
    QCOMPARE(cache.render(Wmf, PictureFormat::Wmf), renderer.result);
}

void TestSkinPicture::cacheIsBounded()
{
    const TestFolder folder;
    const StandInMetafiles renderer(pngOf(12, 9));
    const MetafileCache cache(folder.path("cache"), renderer);
    for (int number = 0; number < MetafileCache::MostFiles + 10; ++number)
        QVERIFY(!cache.render(Wmf + QByteArray::number(number), PictureFormat::Wmf).isEmpty());
    QCOMPARE(namesIn(folder.path("cache")).size(), MetafileCache::MostFiles);
}

void TestSkinPicture::cacheThatCannotBeWrittenDoesNotMatter()
{
    const TestFolder folder;
    folder.write("cache", "a file");
    const StandInMetafiles renderer(pngOf(12, 9));
    const MetafileCache cache(folder.path("cache"), renderer);
    QCOMPARE(cache.render(Wmf, PictureFormat::Wmf), renderer.result);
    QCOMPARE(contentOf(folder.path("cache")), QByteArray("a file"));
}

QTEST_MAIN(TestSkinPicture)
#include "tst_skinpicture.moc"
