#include "skin/PointReader.h"
#include "skin/SkinElement.h"
#include "skin/SkinLook.h"
#include "support/TestFolder.h"

#include <QRegularExpression>
#include <QTest>

using namespace Quorlin;

namespace {

QString guide()
{
    return QString::fromUtf8(contentOf(QStringLiteral(QUORLIN_SOURCE_DIR "/docs/skin-guide.md")));
}

/// The cells of the guide's table row for an element.
QStringList rowOf(QLatin1StringView element)
{
    const QRegularExpression row(QLatin1String("^\\| `\\w+` \\| `") + element +
                                     QLatin1String("` \\|.*$"),
                                 QRegularExpression::MultilineOption);
    QStringList cells;
    for (const auto &cell : row.match(guide()).captured().split(QLatin1Char('|')))
        cells.append(cell.trimmed());
    return cells;
}

QString kindOf(SkinKind kind)
{
    switch (kind) {
    case SkinKind::Position:
        return QStringLiteral("position");
    case SkinKind::Geometry:
        return QStringLiteral("geometry");
    case SkinKind::Window:
        return QStringLiteral("window");
    case SkinKind::Picture:
        return QStringLiteral("picture");
    }
    return {};
}

QString builtInOf(const SkinElement &element)
{
    const auto &place = element.builtIn;
    switch (element.kind) {
    case SkinKind::Window:
        return QStringLiteral("%1 × %2").arg(place.width).arg(place.height);
    case SkinKind::Picture:
        return QStringLiteral("none");
    default:
        return QStringLiteral("%1, %2, %3 × %4%5")
            .arg(place.x)
            .arg(place.y)
            .arg(place.width)
            .arg(place.height)
            .arg(place.visible ? QString() : QStringLiteral(", hidden"));
    }
}

} // namespace

/// What the guide for authors of skins says is what the program does.
class TestSkinGuide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsEveryElement_data();
    void tellsEveryElement();
    void tellsEveryColour_data();
    void tellsEveryColour();
    void tellsEveryKeyWord_data();
    void tellsEveryKeyWord();
    void tellsTheLimits();
};

void TestSkinGuide::tellsEveryElement_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(SkinElement::all().size()); ++index)
        QTest::newRow(SkinElement::all()[std::size_t(index)].name.data()) << index;
}

void TestSkinGuide::tellsEveryElement()
{
    QFETCH(const int, index);
    const auto &element = SkinElement::all()[std::size_t(index)];
    const auto cells = rowOf(element.name);
    QCOMPARE(cells.size(), 7);
    QCOMPARE(cells.at(1), QLatin1Char('`') + element.section + QLatin1Char('`'));
    QCOMPARE(cells.at(3),
             kindOf(element.kind) +
                 (element.skippedInTextMode ? QStringLiteral(", not in text mode") : QString()));
    QCOMPARE(cells.at(4), builtInOf(element));
    QVERIFY(!cells.at(5).isEmpty());
}

void TestSkinGuide::tellsEveryColour_data()
{
    QTest::addColumn<QString>("row");
    for (const auto &colour : LookColourRow::all()) {
        const auto value = QColor::fromRgba(colour.builtIn);
        const auto name = value.name(value.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
        QTest::newRow(colour.key.data())
            << QStringLiteral("| `%1` | `%2` |").arg(QString(colour.key), name.toUpper());
    }
}

void TestSkinGuide::tellsEveryColour()
{
    QFETCH(const QString, row);
    QVERIFY2(guide().contains(row), qPrintable(row));
}

void TestSkinGuide::tellsEveryKeyWord_data()
{
    QTest::addColumn<QString>("word");
    for (const auto *word : {"Classic",
                             "Advanced",
                             "PosX",
                             "PosY",
                             "Width",
                             "Height",
                             "Visible",
                             "Picture",
                             "TextMode",
                             "Min",
                             "FontSize",
                             "TitleFontSize",
                             "ConvertFontSize",
                             "Bold",
                             "Corners",
                             "FontFamily",
                             "@2x",
                             "Info.ssk",
                             "None",
                             "tools/render-skins",
                             "quorlin-skin"})
        QTest::newRow(word) << QLatin1Char('`') + QString::fromLatin1(word);
}

void TestSkinGuide::tellsEveryKeyWord()
{
    QFETCH(const QString, word);
    QVERIFY2(guide().contains(word), qPrintable(word));
}

void TestSkinGuide::tellsTheLimits()
{
    QVERIFY(guide().contains(QStringLiteral("32 MiB")));
    QCOMPARE(PointReader::MostBytes, 32 * 1024 * 1024);
    QVERIFY(guide().contains(QStringLiteral("16384")));
    QCOMPARE(PointReader::LongestSide, 16384);
    QVERIFY(guide().contains(QStringLiteral("64 megapoints")));
    QCOMPARE(PointReader::MostPoints, 64 * 1024 * 1024);
    QVERIFY(guide().contains(QStringLiteral("from 8 to 48")));
    QCOMPARE(SkinLook::SmallestFont, 8);
    QCOMPARE(SkinLook::LargestFont, 48);
    QVERIFY(guide().contains(QStringLiteral("from 0 to 24")));
    QCOMPARE(SkinLook::LargestCorners, 24);
}

QTEST_GUILESS_MAIN(TestSkinGuide)
#include "tst_skinguide.moc"
