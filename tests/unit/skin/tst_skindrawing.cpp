#include "SkinText.h"
#include "skin/MetafileCache.h"
#include "skin/MetafileSize.h"
#include "skin/PictureLoader.h"
#include "skin/PointReader.h"
#include "skin/SvgCheck.h"
#include "skin/SvgProcess.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

using namespace Quorlin;

namespace {

QByteArray svg(const QByteArray &inside = "<rect width='12' height='9' fill='#f00'/>")
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
           "width='12' height='9'>" +
           inside + "</svg>";
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

/// Pictures made of lines, which other processes render.
class TestSkinDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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

    void metafileTellsItsSize_data();
    void metafileTellsItsSize();
    void metafileIsGivenToTheRenderer();
    void metafileThatCannotBeRenderedIsRefused();
    void metafileIsRenderedOnce();
    void damagedFileOfTheCacheIsMadeAnew();
    void cacheIsBounded();
    void cacheThatCannotBeWrittenDoesNotMatter();
};

void TestSkinDrawing::drawingIsRenderedAtEveryDensity()
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

void TestSkinDrawing::drawingNeedsARenderer()
{
    const TestFolder folder;
    folder.write("a.svg", svg());
    QVERIFY(!loads(folder, "a.svg"));
}

void TestSkinDrawing::drawingThatReachesOutIsRefused_data()
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

void TestSkinDrawing::drawingThatReachesOutIsRefused()
{
    QFETCH(const QByteArray, drawing);
    QVERIFY(!SvgCheck::isHarmless(drawing));
    const TestFolder folder;
    folder.write("a.svg", drawing);
    folder.write("secret.png", pngOf(9, 9));
    QVERIFY(!sizeOfLoaded(PictureLoader(realDrawings()), folder, "a.svg").isValid());
}

void TestSkinDrawing::ordinaryDrawingsAreAccepted_data()
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

void TestSkinDrawing::ordinaryDrawingsAreAccepted()
{
    QFETCH(const QByteArray, drawing);
    const TestFolder folder;
    folder.write("a.svg", drawing);
    QVERIFY(sizeOfLoaded(PictureLoader(realDrawings()), folder, "a.svg").isValid());
}

void TestSkinDrawing::drawingOfManyOrDeepElementsIsRefused()
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

void TestSkinDrawing::slowDrawingIsGivenUp()
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

void TestSkinDrawing::eventsGoOnWhileADrawingIsRendered()
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

void TestSkinDrawing::brokenRendererMakesNoPicture()
{
    for (const auto *program : {"/nowhere/quorlin-svg", "/bin/true", "/bin/false"}) {
        const SvgProcess renderer(QString::fromLatin1(program));
        QVERIFY(renderer.render(svg(), {}, Waiting::WithEvents).isNull());
        QVERIFY(renderer.render(svg(), {24, 18}, Waiting::Still).isNull());
    }
}

void TestSkinDrawing::metafileTellsItsSize_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QSizeF>("inches");
    const auto wmf = [](const char *box) {
        return QByteArray::fromHex("d7cdc69a0000") + QByteArray::fromHex(box) + QByteArray(6, 0);
    };
    QTest::newRow("wmf") << wmf("0a000a006a006a016000") << QSizeF(1.0, 352.0 / 96);
    QTest::newRow("negative corner") << wmf("a0ff000000006000"
                                            "6000")
                                     << QSizeF(1, 1);
    QTest::newRow("no units") << wmf("00000000600060000000") << QSizeF();
    QTest::newRow("upside down") << wmf("60000000000060006000") << QSizeF();
    QTest::newRow("too large") << wmf("00000000ff7fff7f0100") << QSizeF();
    QTest::newRow("cut wmf") << wmf("00000000600060006000").left(20) << QSizeF();
    const auto emf = [](const char *frame) {
        return QByteArray::fromHex("01000000") + QByteArray(20, 0) + QByteArray::fromHex(frame) +
               QByteArray(" EMF") + QByteArray(44, 0);
    };
    QTest::newRow("emf") << emf("0000000000000000ec090000d8130000") << QSizeF(1, 2);
    QTest::newRow("absurd emf") << emf("000000800000008"
                                       "0ffffff7fffffff7f")
                                << QSizeF();
    QTest::newRow("cut emf") << emf("0000000000000000ec090000d8130000").left(80) << QSizeF();
    QTest::newRow("nothing") << QByteArray() << QSizeF();
}

void TestSkinDrawing::metafileTellsItsSize()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QSizeF, inches);
    QCOMPARE(metafileInches(content, pictureFormatOf(content)), inches);
}

void TestSkinDrawing::metafileIsGivenToTheRenderer()
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

void TestSkinDrawing::metafileThatCannotBeRenderedIsRefused()
{
    const TestFolder folder;
    folder.write("a.wmf", Wmf);
    QVERIFY(!loads(folder, "a.wmf"));
    const PictureLoader loader({}, std::make_shared<StandInMetafiles>("damaged"));
    QVERIFY(!sizeOfLoaded(loader, folder, "a.wmf").isValid());
}

void TestSkinDrawing::metafileIsRenderedOnce()
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

void TestSkinDrawing::damagedFileOfTheCacheIsMadeAnew()
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

void TestSkinDrawing::cacheIsBounded()
{
    const TestFolder folder;
    const StandInMetafiles renderer(pngOf(12, 9));
    const MetafileCache cache(folder.path("cache"), renderer);
    for (int number = 0; number < MetafileCache::MostFiles + 10; ++number)
        QVERIFY(!cache.render(Wmf + QByteArray::number(number), PictureFormat::Wmf).isEmpty());
    QCOMPARE(namesIn(folder.path("cache")).size(), MetafileCache::MostFiles);
}

void TestSkinDrawing::cacheThatCannotBeWrittenDoesNotMatter()
{
    const TestFolder folder;
    folder.write("cache", "a file");
    const StandInMetafiles renderer(pngOf(12, 9));
    const MetafileCache cache(folder.path("cache"), renderer);
    QCOMPARE(cache.render(Wmf, PictureFormat::Wmf), renderer.result);
    QCOMPARE(contentOf(folder.path("cache")), QByteArray("a file"));
}

QTEST_MAIN(TestSkinDrawing)
#include "tst_skindrawing.moc"
