#include "unit/postscript/PdfBuilder.h"
#include "unit/postscript/PrintScene.h"

#include <QTest>

#include <qpdf/QPDF.hh>

#include <cstdlib>

using namespace Quorlin;

namespace {

/// True when no colour differs by more than a rounding.
bool alike(const QList<int> &a, const QList<int> &b)
{
    if (a.size() != 3 || b.size() != 3)
        return false;
    for (int i = 0; i < 3; ++i)
        if (std::abs(a[i] - b[i]) > 3)
            return false;
    return true;
}

QByteArray form(const QByteArray &entries)
{
    return "/Type /XObject /Subtype /Form /BBox [0 0 100 100] " + entries;
}

const QByteArray Squares = "1 0 0 rg 0 0 60 60 re f 0 1 0 rg 40 40 60 60 re f";
const QByteArray Background = "0 0 1 rg 0 0 300 50 re f ";

} // namespace

class TestPrintTransparency : public QObject
{
    Q_OBJECT

private:
    void compareColors(PrintScene &scene, const QList<QPair<int, int>> &points)
    {
        for (const auto &[x, y] : points) {
            const auto expected = scene.sourceColor(1, x, y);
            const auto found = scene.resultColor(1, x, y);
            QVERIFY2(alike(expected, found), qPrintable(QStringLiteral("at %1,%2").arg(x).arg(y)));
        }
    }

private Q_SLOTS:
    void aTransparentShapeLetsTheTextLive()
    {
        PdfDocument document;
        document.addPage(Background +
                             "BT /F1 20 Tf 20 60 Td (under) Tj ET q /A gs 1 0 0 rg 10 10 100 "
                             "100 re f BT /F1 20 Tf 20 20 Td (through) Tj ET Q "
                             "0 1 0 rg 200 10 20 20 re f",
                         "/ExtGState << /A << /ca .5 /CA .5 >> >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList({QStringLiteral("under"), QStringLiteral("through")}));
        compareColors(scene, {{15, 45}, {100, 100}, {210, 20}, {250, 20}});
        QVERIFY(!alike(scene.resultColor(1, 15, 45), {255, 0, 0}));
    }

    void whoeverDistilsMayCountThePagesWithAShowpageOfItsOwn()
    {
        PdfDocument document;
        document.addPage(Background);
        document.addPage(Background);
        PrintScene scene;
        scene.print(document.file());
        const auto file = scene.folder().path("counted.ps");
        QFile counted(file);
        QVERIFY(counted.open(QIODevice::WriteOnly));
        counted.write("userdict /showpage { systemdict /showpage get exec (a page) = } put\n" +
                      scene.postScript());
        counted.close();
        const auto said =
            outputOf(QStringLiteral("gs"),
                     {QStringLiteral("-q"), QStringLiteral("-dNOPAUSE"), QStringLiteral("-dBATCH"),
                      QStringLiteral("-sDEVICE=nullpage"), file});
        QCOMPARE(said.count("a page"), 2);
    }

    void aGroupLooksThroughAsAWhole()
    {
        PdfDocument document;
        const int group =
            document.builder().addStream(form("/Group << /S /Transparency >>"), Squares);
        document.addPage(Background + "/A gs q 1 0 0 1 10 10 cm /G Do Q",
                         "/ExtGState << /A << /ca .5 >> >> /XObject << /G " +
                             PdfBuilder::ref(group) + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        compareColors(scene, {{15, 15}, {60, 60}, {100, 100}, {60, 20}});
    }

    void blendModesAreKept()
    {
        PdfDocument document;
        document.addPage("1 1 0 rg 0 0 300 100 re f q /M gs 0 1 1 rg 10 10 100 150 re f Q",
                         "/ExtGState << /M << /BM [/Unknown /Multiply] >> >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        compareColors(scene, {{20, 20}, {20, 130}, {200, 50}});
        QVERIFY(alike(scene.resultColor(1, 20, 20), {0, 255, 0}));
    }

    void aSoftMaskedPictureStaysAPictureWithItsMask()
    {
        PdfDocument document;
        const int mask = document.builder().addStream(
            "/Type /XObject /Subtype /Image /Width 2 /Height 1 /BitsPerComponent 8 /ColorSpace "
            "/DeviceGray",
            QByteArray("\x00\xff", 2));
        const int image = document.builder().addStream(
            "/Type /XObject /Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 /ColorSpace "
            "/DeviceRGB /SMask " +
                PdfBuilder::ref(mask),
            QByteArray("\xff\x00\x00", 3));
        document.addPage(Background +
                             "q 100 0 0 100 10 10 cm /I Do Q BT /F1 20 Tf 20 150 Td (text) Tj ET",
                         "/XObject << /I " + PdfBuilder::ref(image) + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.words(), QStringList(QStringLiteral("text")));
        compareColors(scene, {{30, 30}, {30, 80}, {90, 30}, {90, 80}});
        int masks = 0;
        for (auto object : scene.result().getAllObjects())
            if (object.isStream() && object.getDict().getKey("/SMask").isStream())
                ++masks;
        QCOMPARE(masks, 1);
    }

    void aMaskEndsWithItsScope()
    {
        PdfDocument document;
        const int mask = document.builder().addStream(
            form("/Group << /S /Transparency /CS /DeviceGray >>"), "1 g 0 0 50 100 re f");
        document.addPage("q /L gs 1 0 0 rg 0 0 100 100 re f q /L gs 0 0 1 rg 0 0 100 20 re f Q "
                         "0 1 0 rg 0 80 100 20 re f Q 0 0 1 rg 0 100 100 50 re f",
                         "/ExtGState << /L << /SMask << /S /Luminosity /G " +
                             PdfBuilder::ref(mask) + " >> >> >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        compareColors(scene, {{20, 10}, {20, 50}, {80, 50}, {20, 90}, {80, 90}, {80, 120}});
        QVERIFY(alike(scene.resultColor(1, 80, 50), {255, 255, 255}));
        QVERIFY(alike(scene.resultColor(1, 80, 120), {0, 0, 255}));
    }

    void aMaskMayBeTurnedOver()
    {
        PdfDocument document;
        const int mask = document.builder().addStream(
            form("/Group << /S /Transparency /CS /DeviceGray >>"), "1 g 0 0 50 100 re f");
        document.addPage(
            "/L gs 1 0 0 rg 0 0 100 100 re f",
            "/ExtGState << /L << /SMask << /S /Luminosity /TR << /FunctionType 2 /Domain "
            "[0 1] /C0 [1] /C1 [0] /N 1 >> /G " +
                PdfBuilder::ref(mask) + " >> >> >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        compareColors(scene, {{20, 50}, {80, 50}});
    }

    void patternsLookThroughToo()
    {
        PdfDocument document;
        const int pattern = document.builder().addStream(
            "/PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 20 20] /XStep 20 /YStep 20 "
            "/Resources << /ExtGState << /A << /ca .5 >> >> >>",
            "/A gs 1 0 0 rg 0 0 20 20 re f");
        document.addPage(Background + "/Pattern cs /P scn 10 10 100 100 re f",
                         "/Pattern << /P " + PdfBuilder::ref(pattern) + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        compareColors(scene, {{30, 30}, {30, 90}});
    }

    void shadingsStaySmooth()
    {
        PdfDocument document;
        document.addPage(
            "q 10 10 200 100 re W n /S sh Q",
            "/Shading << /S << /ShadingType 2 /ColorSpace /DeviceRGB /Coords [10 0 210 "
            "0] /Function << /FunctionType 3 /Domain [0 1] /Bounds [.5] /Encode [0 1 0 "
            "1] /Functions [<< /FunctionType 2 /Domain [0 1] /C0 [1 0 0] /C1 [0 1 0] /N "
            "1 >> << /FunctionType 2 /Domain [0 1] /C0 [0 1 0] /C1 [0 0 1] /N 1 >>] >> "
            ">> >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        compareColors(scene, {{20, 50}, {60, 50}, {110, 50}, {200, 50}, {250, 50}});
        int shadings = 0;
        for (auto object : scene.result().getAllObjects())
            if (object.isDictionary() && object.hasKey("/ShadingType"))
                ++shadings;
        QCOMPARE(shadings, 1);
    }

    void formsThatShareThePagesResourcesKeepTheirShadings()
    {
        PdfDocument document;
        auto &builder = document.builder();
        const int resources = builder.next();
        const auto shared = PdfBuilder::ref(resources);
        builder.add("<< /XObject << /X " + PdfBuilder::ref(resources + 1) +
                    " >> /Shading << /S << /ShadingType 2 /ColorSpace /DeviceRGB /Coords [10 0 210 "
                    "0] /Function << /FunctionType 2 /Domain [0 1] /C0 [1 0 0] /C1 [0 0 1] /N 1 >> "
                    ">> >> >>");
        builder.addStream("/Type /XObject /Subtype /Form /BBox [10 10 210 110] /Group << /S "
                          "/Transparency >> /Resources " +
                              shared,
                          "/S sh");
        const int content = builder.addStream({}, "/X Do");
        builder.replace(document.addPage({}),
                        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 300 200] /Contents " +
                            PdfBuilder::ref(content) + " /Resources " + shared + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QCOMPARE(scene.postScript().count(">> QTshade"), 1);
        compareColors(scene, {{20, 50}, {110, 50}, {200, 50}, {250, 50}});
    }

    void anInterpreterWithoutTransparencyPrintsOpaquely()
    {
        PdfDocument document;
        const int group =
            document.builder().addStream(form("/Group << /S /Transparency /K true >>"), Squares);
        const int mask = document.builder().addStream(
            form("/Group << /S /Transparency /CS /DeviceGray >>"), "1 g 0 0 50 100 re f");
        document.addPage(
            "/A gs /G Do /L gs 0 0 1 rg 150 0 50 50 re f",
            "/ExtGState << /A << /ca .5 /BM /Multiply >> /L << /SMask << /S /Luminosity "
            "/G " +
                PdfBuilder::ref(mask) + " >> >> >> /XObject << /G " + PdfBuilder::ref(group) +
                " >>");
        PrintScene scene;
        QCOMPARE(scene.print(document.file()).reason, Reason::None);
        QCOMPARE(scene.distil("1.3"), QByteArray());
        QVERIFY(alike(scene.resultColor(1, 20, 20), {255, 0, 0}));
        QVERIFY(alike(scene.resultColor(1, 160, 20), {0, 0, 255}));
        const auto plain = outputOf(QStringLiteral("gs"),
                                    {QStringLiteral("-q"), QStringLiteral("-dSAFER"),
                                     QStringLiteral("-dNOPAUSE"), QStringLiteral("-dBATCH"),
                                     QStringLiteral("-sDEVICE=nullpage"), scene.request.output});
        QCOMPARE(plain, QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestPrintTransparency)
#include "tst_print_transparency.moc"
