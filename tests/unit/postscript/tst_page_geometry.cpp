#include "component/backends/postscript/PageGeometry.h"
#include "component/backends/postscript/SheetView.h"

#include <QTest>

using namespace Quorlin;

namespace {

constexpr Box Visible{10, 20, 110, 220};

QString text(const PdfView &view)
{
    QStringList parts{QString::fromStdString(view.type)};
    for (const auto &value : view.values)
        parts.append(value ? QString::number(*value) : QStringLiteral("null"));
    return parts.join(QLatin1Char(' '));
}

} // namespace

class TestPageGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theVisibleBoxFillsTheSheet_data()
    {
        QTest::addColumn<int>("rotation");
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("height");
        for (const int rotation : {0, 90, 180, 270, -90, 450})
            QTest::addRow("%d", rotation) << rotation << (rotation % 180 == 0 ? 100.0 : 200.0)
                                          << (rotation % 180 == 0 ? 200.0 : 100.0);
    }

    void theVisibleBoxFillsTheSheet()
    {
        QFETCH(int, rotation);
        QFETCH(double, width);
        QFETCH(double, height);
        const PageGeometry page(Visible, rotation);
        QCOMPARE(page.sheetWidth(), width);
        QCOMPARE(page.sheetHeight(), height);
        const auto box = mapBox(Visible, page.toSheet());
        QCOMPARE(box, (Box{0, 0, width, height}));
    }

    void turningClockwiseBringsTheTopToTheRight()
    {
        const auto top = PageGeometry(Visible, 90).toSheet().map({60, 220});
        QCOMPARE(top.x, 200.0);
        QCOMPARE(top.y, 50.0);
    }

    void largeUnitsMakeLargeSheets()
    {
        const PageGeometry page(Visible, 90, 2.5);
        QCOMPARE(page.sheetWidth(), 500.0);
        QCOMPARE(page.sheetHeight(), 250.0);
        QCOMPARE(mapBox(Visible, page.toSheet()), (Box{0, 0, 500, 250}));
        QCOMPARE(text(onSheet({"XYZ", {10.0, 120.0, 2.0}}, page)), QStringLiteral("XYZ 250 250 2"));
        QCOMPARE(PageGeometry(Visible, 0, 1000).sheetHeight(), 14400.0);
        QCOMPARE(PageGeometry(Visible, 0, 1e-9).sheetWidth(), 1.0);
    }

    void viewsFollowThePage_data()
    {
        QTest::addColumn<int>("rotation");
        QTest::addColumn<QString>("expected");
        QTest::newRow("upright") << 0 << QStringLiteral("FitH 80");
        QTest::newRow("right") << 90 << QStringLiteral("FitV 80");
        QTest::newRow("head down") << 180 << QStringLiteral("FitH 120");
        QTest::newRow("left") << 270 << QStringLiteral("FitV 120");
    }

    void viewsFollowThePage()
    {
        QFETCH(int, rotation);
        QFETCH(QString, expected);
        QCOMPARE(text(onSheet({"FitH", {100.0}}, PageGeometry(Visible, rotation))), expected);
    }

    void unknownCoordinatesStayUnknown()
    {
        const PageGeometry upright(Visible, 0);
        QCOMPARE(text(onSheet({"XYZ", {std::nullopt, 120.0, 0.0}}, upright)),
                 QStringLiteral("XYZ null 100 0"));
        const PageGeometry sideways(Visible, 90);
        QCOMPARE(text(onSheet({"XYZ", {std::nullopt, 120.0, std::nullopt}}, sideways)),
                 QStringLiteral("XYZ 100 null null"));
        QCOMPARE(text(onSheet({"FitR", {10.0, 20.0, std::nullopt, 5.0}}, upright)),
                 QStringLiteral("Fit"));
        QCOMPARE(text(onSheet({"FitBV", {}}, upright)), QStringLiteral("FitBV null"));
    }

    void inversionUndoesAMatrix()
    {
        const Matrix matrix{2, 1, -1, 3, 5, 7};
        const auto point = matrix.then(matrix.inverted()).map({11, 13});
        QCOMPARE(point.x, 11.0);
        QCOMPARE(point.y, 13.0);
        QVERIFY(!(Matrix{1, 2, 2, 4, 0, 0}).invertible());
    }
};

QTEST_APPLESS_MAIN(TestPageGeometry)
#include "tst_page_geometry.moc"
