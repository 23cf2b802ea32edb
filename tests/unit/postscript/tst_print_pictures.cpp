#include "unit/postscript/PdfBuilder.h"
#include "unit/postscript/PrintScene.h"

#include <QFile>
#include <QTest>

#include <qpdf/QPDF.hh>

using namespace Quorlin;

namespace {

constexpr int Side = 40; ///< pixels

int addMask(PdfBuilder &builder)
{
    QByteArray pixels;
    for (int i = 0; i < Side * Side; ++i)
        pixels += static_cast<char>(i / Side * 6);
    return builder.addStream("/Type /XObject /Subtype /Image /Width 40 /Height 40 "
                             "/BitsPerComponent 8 /ColorSpace /DeviceGray",
                             pixels);
}

/// Adds a picture that is dark on its left and light on its right.
int addPicture(PdfBuilder &builder, bool masked = false)
{
    const auto entries = masked ? "/SMask " + PdfBuilder::ref(addMask(builder)) : QByteArray();
    QByteArray pixels;
    for (int i = 0; i < Side * Side; ++i) {
        pixels += static_cast<char>(i % Side * 6);
        pixels += static_cast<char>(100);
        pixels += static_cast<char>(0);
    }
    return builder.addStream("/Type /XObject /Subtype /Image /Width 40 /Height 40 "
                             "/BitsPerComponent 8 /ColorSpace /DeviceRGB " +
                                 entries,
                             pixels);
}

QByteArray named(int picture)
{
    return "/XObject << /P " + PdfBuilder::ref(picture) + " >>";
}

QByteArray drawnAt(int x, int y, int size)
{
    const auto side = QByteArray::number(size);
    return "q " + side + " 0 0 " + side + " " + QByteArray::number(x) + " " +
           QByteArray::number(y) + " cm /P Do Q ";
}

} // namespace

class TestPrintPictures : public QObject
{
    Q_OBJECT

private:
    static void addKinds()
    {
        QTest::addColumn<bool>("masked");
        QTest::newRow("opaque") << false;
        QTest::newRow("with a soft mask") << true;
    }

    static int picturesIn(PrintScene &scene)
    {
        int pictures = 0;
        for (auto object : scene.result().getAllObjects())
            if (object.isStream() && object.getDict().getKey("/ColorSpace").isName() &&
                object.getDict().getKey("/ColorSpace").getName() == "/DeviceRGB")
                ++pictures;
        return pictures;
    }

    /// Everywhere on a grid of these pages.
    static void compareColors(PrintScene &scene, int pages)
    {
        for (int page = 1; page <= pages; ++page)
            for (int x = 25; x < 300; x += 50)
                for (int y = 25; y < 150; y += 50) {
                    const auto expected = scene.sourceColor(page, x, y);
                    const auto found = scene.resultColor(page, x, y);
                    QCOMPARE(found.size(), 3);
                    for (int i = 0; i < 3; ++i)
                        QVERIFY(qAbs(found[i] - expected[i]) <= 12);
                }
    }

private Q_SLOTS:
    void aPictureOnManyPagesIsPrintedOnce_data() { addKinds(); }

    void aPictureOnManyPagesIsPrintedOnce()
    {
        QFETCH(bool, masked);
        PdfDocument document;
        const int picture = addPicture(document.builder(), masked);
        document.addPage("q 60 60 20 20 re W n " + drawnAt(50, 50, 80) + "Q", named(picture));
        document.addPage(drawnAt(20, 20, 80) + drawnAt(150, 90, 60), named(picture));
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.postScript().count("/Width 40"), masked ? 2 : 1);
        QCOMPARE(picturesIn(scene), 1);
        compareColors(scene, 2);
    }

    void aPictureThatGrowsIsPrintedAnew()
    {
        PdfDocument document;
        const int picture = addPicture(document.builder());
        document.addPage(drawnAt(20, 20, 40) + drawnAt(100, 20, 120), named(picture));
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.postScript().count("/Width 40"), 2);
        compareColors(scene, 1);
    }

    void aPictureInAHiddenLayerIsNotTheFirstOne()
    {
        PdfDocument document;
        const int picture = addPicture(document.builder());
        const int layer = document.builder().add("<< /Type /OCG /Name (hidden) >>");
        document.addPage("/OC /L BDC " + drawnAt(20, 20, 80) + "EMC " + drawnAt(150, 20, 80),
                         named(picture) + " /Properties << /L " + PdfBuilder::ref(layer) + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file("/OCProperties << /OCGs [" + PdfBuilder::ref(layer) +
                                        "] /D << /OFF [" + PdfBuilder::ref(layer) + "] >> >>")));
        compareColors(scene, 1);
    }

    void interpretersThatKeepNoFormsDrawPicturesAgain_data() { addKinds(); }

    void interpretersThatKeepNoFormsDrawPicturesAgain()
    {
        QFETCH(bool, masked);
        PdfDocument document;
        const int picture = addPicture(document.builder(), masked);
        document.addPage(drawnAt(20, 20, 80) + drawnAt(150, 20, 80), named(picture));
        PrintScene scene;
        QCOMPARE(scene.print(document.file()).reason, Reason::None);
        const auto drawn = scene.folder().path("drawn.ppm");
        QCOMPARE(outputOf(QStringLiteral("gs"),
                          {QStringLiteral("-q"), QStringLiteral("-dSAFER"), QStringLiteral("-r72"),
                           QStringLiteral("-dNOPAUSE"), QStringLiteral("-dBATCH"),
                           QStringLiteral("-sDEVICE=ppmraw"), QStringLiteral("-o"), drawn,
                           scene.request.output}),
                 QByteArray());
        QFile file(drawn);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto row = file.readAll().last(3 * 300 * 60).first(3 * 300); // 60 points from below
        QCOMPARE(row.mid(3 * 21, 3 * 78), row.mid(3 * 151, 3 * 78));
        QVERIFY(row.mid(3 * 21, 3) != row.mid(3 * 90, 3));
        QCOMPARE(static_cast<uchar>(row[3 * 25 + 1]), uchar(100));
    }
};

QTEST_GUILESS_MAIN(TestPrintPictures)
#include "tst_print_pictures.moc"
