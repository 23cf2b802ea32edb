#include "unit/postscript/PdfBuilder.h"
#include "unit/postscript/PrintScene.h"

#include <QTest>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFOutlineDocumentHelper.hh>
#include <qpdf/QPDFPageLabelDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include <cmath>

using namespace Quorlin;

namespace {

QByteArray linkTo(const QByteArray &rect, const QByteArray &target)
{
    return "<< /Type /Annot /Subtype /Link /Border [0 0 0] /Rect [" + rect + "] " + target + " >>";
}

/// The links of a page, in order.
QList<QPDFObjectHandle> linksOf(QPDFObjectHandle page)
{
    QList<QPDFObjectHandle> list;
    auto annotations = page.getKey("/Annots");
    for (int i = 0; annotations.isArray() && i < annotations.getArrayNItems(); ++i)
        list.append(annotations.getArrayItem(i));
    return list;
}

QList<double> numbers(QPDFObjectHandle array)
{
    QList<double> list;
    for (auto item : array.aitems())
        if (item.isNumber())
            list.append(std::round(item.getNumericValue()));
    return list;
}

} // namespace

class TestPrintLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linksLieWhereTheyLayOnTurnedAndShiftedPages_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::addColumn<QList<double>>("rect");
        QTest::addColumn<QList<double>>("size");
        const QByteArray boxes = "/MediaBox [0 0 400 300] /CropBox [50 20 350 220] ";
        using L = QList<double>;
        QTest::newRow("upright") << boxes << L{10, 20, 30, 60} << L{0, 0, 300, 200};
        QTest::newRow("turned right")
            << boxes + "/Rotate 90" << L{20, 270, 60, 290} << L{0, 0, 200, 300};
        QTest::newRow("head down")
            << boxes + "/Rotate 180" << L{270, 140, 290, 180} << L{0, 0, 300, 200};
        QTest::newRow("turned left")
            << boxes + "/Rotate -90" << L{140, 10, 180, 30} << L{0, 0, 200, 300};
    }

    void linksLieWhereTheyLayOnTurnedAndShiftedPages()
    {
        QFETCH(QByteArray, page);
        QFETCH(QList<double>, rect);
        QFETCH(QList<double>, size);
        PdfDocument document;
        document.addPage("0 1 0 rg 60 40 20 40 re f", {},
                         page + " /Annots [" +
                             linkTo("60 40 80 80", "/A << /S /URI /URI (http://a.example/) >>") +
                             "]");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        const auto links = linksOf(scene.page(1));
        QCOMPARE(links.size(), 1);
        auto found = links[0];
        QCOMPARE(numbers(found.getKey("/Rect")), rect);
        QCOMPARE(numbers(scene.page(1).getKey("/MediaBox")), size);
        const int x = static_cast<int>((rect[0] + rect[2]) / 2);
        const int y = static_cast<int>((rect[1] + rect[3]) / 2);
        QCOMPARE(scene.resultColor(1, x, y), QList<int>({0, 255, 0}));
    }

    void addressesComeBackByteForByte()
    {
        const QByteArray odd = "http://a.example/(x_(y)?q=%28\\\\ \\(";
        PdfDocument document;
        document.addPage({}, {},
                         "/MediaBox [0 0 300 200] /Annots [" +
                             linkTo("0 0 10 10", "/A << /S /URI /URI <" + odd.toHex() + "> >>") +
                             linkTo("0 0 10 10", "/A << /S /URI /URI (file:///w/1/b.pdf) >>") +
                             "]");
        PrintScene scene;
        scene.request.rebase = {{"file:///w/1/", "file:///d/"}};
        QVERIFY(scene.run(document.file()));
        const auto links = linksOf(scene.page(1));
        QCOMPARE(links.size(), 2);
        auto first = links[0];
        auto second = links[1];
        QCOMPARE(QByteArray::fromStdString(first.getKey("/A").getKey("/URI").getStringValue()),
                 odd);
        QCOMPARE(second.getKey("/A").getKey("/URI").getStringValue(), "file:///d/b.pdf");
    }

    void linksInsideTheDocumentLeadToTheirPage()
    {
        PdfDocument document;
        const int first = document.builder().next() + 1;
        const int second = first + 2;
        document.addPage(
            {}, {},
            "/MediaBox [0 0 300 200] /Annots [" +
                linkTo("0 0 10 10", "/Dest [" + PdfBuilder::ref(second) + " /XYZ 60 150 null]") +
                linkTo("0 0 10 10", "/A << /S /GoTo /D <6E6129286D65> >>") +
                linkTo("0 0 10 10", "/Dest /old") + "]");
        const int made = document.addPage({}, {}, "/MediaBox [50 100 350 300]");
        QCOMPARE(made, second);
        PrintScene scene;
        QVERIFY(scene.run(document.file("/Names << /Dests << /Names [<6E6129286D65> [" +
                                        PdfBuilder::ref(second) +
                                        " /FitH 180]] >> >> /Dests << /old << /D [" +
                                        PdfBuilder::ref(first) + " /Fit] >> >>")));
        auto links = linksOf(scene.page(1));
        QCOMPARE(links.size(), 3);
        auto place = links[0].getKey("/Dest");
        QCOMPARE(place.getArrayItem(0).getObjGen(), scene.page(2).getObjGen());
        QCOMPARE(place.getArrayItem(2).getNumericValue(), 10.0);
        QCOMPARE(place.getArrayItem(3).getNumericValue(), 50.0);
        QVERIFY(place.getArrayItem(4).isNull());
        QPDFOutlineDocumentHelper names(scene.result());
        const auto resolved = [&](QPDFObjectHandle owner) {
            auto found = names.resolveNamedDest(owner.getKey("/Dest"));
            return found.isDictionary() ? found.getKey("/D") : found;
        };
        auto named = resolved(links[1]);
        QCOMPARE(named.getArrayItem(0).getObjGen(), scene.page(2).getObjGen());
        QCOMPARE(named.getArrayItem(2).getNumericValue(), 80.0);
        auto old = resolved(links[2]);
        QCOMPARE(old.getArrayItem(0).getObjGen(), scene.page(1).getObjGen());
    }

    void bookmarksKeepTheirTree()
    {
        PdfDocument document;
        const int page = document.addPage({});
        auto &builder = document.builder();
        const int outlines = builder.next();
        const auto at = [&](int n) { return PdfBuilder::ref(outlines + n); };
        const auto dest = "/Dest [" + PdfBuilder::ref(page) + " /Fit] ";
        builder.add("<< /Type /Outlines /First " + at(1) + " /Last " + at(2) + " /Count 2 >>");
        builder.add("<< /Title (One) /Parent " + at(0) + " /Next " + at(2) + " /First " + at(3) +
                    " /Last " + at(3) + " /Count -1 " + dest + ">>");
        builder.add("<< /Title <FEFF00C4201C0029> /Parent " + at(0) + " /Prev " + at(1) +
                    " /F 2 /C [1 0 0] " + dest + ">>");
        builder.add("<< /Title (In) /Parent " + at(1) +
                    " /A << /S /URI /URI (http://b.example/) >> >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file("/Outlines " + at(0) + " /PageMode /UseOutlines")));
        auto tops = QPDFOutlineDocumentHelper(scene.result()).getTopLevelOutlines();
        QCOMPARE(tops.size(), 2U);
        QCOMPARE(tops[0].getTitle(), "One");
        QVERIFY(tops[0].getCount() < 0);
        QCOMPARE(tops[0].getDestPage().getObjGen(), scene.page(1).getObjGen());
        QCOMPARE(tops[0].getKids().size(), 1U);
        QCOMPARE(
            tops[0].getKids()[0].getObjectHandle().getKey("/A").getKey("/URI").getStringValue(),
            "http://b.example/");
        QCOMPARE(QString::fromStdString(tops[1].getTitle()), QString::fromUtf8("Ä“)"));
        QCOMPARE(tops[1].getObjectHandle().getKey("/F").getIntValue(), 2);
        QCOMPARE(scene.result().getRoot().getKey("/PageMode").getName(), "/UseOutlines");
    }

    void labelsAndPropertiesAreKept()
    {
        PdfDocument document;
        document.addPage({});
        document.addPage({});
        PrintScene scene;
        QVERIFY(scene.run(document.file(
            "/PageLabels << /Nums [0 << /S /r >> 1 << /S /D /P (A-) /St 5 >>] >> /Lang (de-DE) "
            "/ViewerPreferences << /DisplayDocTitle true >>",
            "/Info << /Title <FEFF00DC0062> /Author (\\(me\\)) /Keywords (a, b) >>")));
        QPDFPageLabelDocumentHelper labels(scene.result());
        QCOMPARE(labels.getLabelForPage(0).getKey("/S").getName(), "/r");
        QCOMPARE(labels.getLabelForPage(1).getKey("/P").getUTF8Value(), "A-");
        QCOMPARE(labels.getLabelForPage(1).getKey("/St").getIntValue(), 5);
        auto info = scene.result().getTrailer().getKey("/Info");
        QCOMPARE(QString::fromStdString(info.getKey("/Title").getUTF8Value()),
                 QString::fromUtf8("Üb"));
        QCOMPARE(info.getKey("/Author").getUTF8Value(), "(me)");
        QCOMPARE(info.getKey("/Keywords").getUTF8Value(), "a, b");
        QCOMPARE(scene.result().getRoot().getKey("/Lang").getUTF8Value(), "de-DE");
    }

    void aDocumentWithoutATitleGetsNone()
    {
        PdfDocument document;
        document.addPage({});
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QVERIFY(!scene.result().getTrailer().getKey("/Info").hasKey("/Title"));
        QVERIFY(scene.postScript().contains("%QuorlinDocument: a document\n"));
        QVERIFY(scene.postScript().contains("%QuorlinPrinter: Test printer\n"));
    }

    void pagesKeepTheirExactSizes()
    {
        PdfDocument document;
        document.addPage({}, {}, "/MediaBox [0 0 595.28 841.89]");
        document.addPage({}, {}, "/MediaBox [0 0 596.5 842.5]");
        document.addPage("1 0 0 rg 0 0 900 20 re f", {}, "/MediaBox [0.5 0.25 900 20]");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        const auto size = [&](int number) {
            return scene.page(number).getKey("/MediaBox").getArrayAsRectangle();
        };
        QCOMPARE(size(1).urx, 595.28);
        QCOMPARE(size(1).ury, 841.89);
        QCOMPARE(size(2).urx, 596.5);
        QCOMPARE(size(3).urx, 899.5);
        QCOMPARE(size(3).ury, 19.75);
    }
};

QTEST_GUILESS_MAIN(TestPrintLinks)
#include "tst_print_links.moc"
