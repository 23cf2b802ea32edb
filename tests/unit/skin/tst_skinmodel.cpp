#include "RecordedWindow.h"
#include "settings/IniFile.h"
#include "skin/ClickableZone.h"
#include "skin/ControlSize.h"
#include "skin/FormData.h"
#include "skin/PictureData.h"
#include "skin/SkinContext.h"
#include "winsupport/NumberedError.h"

#include <QImage>
#include <QTest>

using namespace Quorlin;

namespace {

const auto Section = QStringLiteral("S");
const auto Name = QStringLiteral("Zone");

SkinPicture pictureOf(int side)
{
    return SkinPicture::ofPoints(QImage(side, side, QImage::Format_RGB32));
}

/// A skin with the pictures "7", "8" and so on, each of that many points.
class Context : public SkinContext
{
public:
    QString name = QStringLiteral("Blue");

    [[nodiscard]] QString GetSkinName() const override { return name; }
    [[nodiscard]] std::optional<SkinPicture> loadPicture(const QString &value) const override
    {
        const auto side = value.toInt();
        return side > 0 ? std::optional(pictureOf(side)) : std::nullopt;
    }
};

/// A description of one element: "PosX=1 Width=2" for the Classic layout, then for the Advanced.
IniFile iniOf(const char *classic, const char *advanced = "")
{
    IniFile ini;
    const auto add = [&ini](const char *mode, const char *keys) {
        for (const auto &key : QString::fromLatin1(keys).split(QLatin1Char(' '))) {
            const auto parts = key.split(QLatin1Char('='));
            if (parts.size() == 2)
                ini.SetVar(QLatin1String(mode) + Name + parts.first(), Section, parts.last());
        }
    };
    add("Classic", classic);
    add("Advanced", advanced);
    return ini;
}

QString textOf(const ControlSize &size, qint32 mode)
{
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(size.X(mode))
        .arg(size.Y(mode))
        .arg(size.width(mode))
        .arg(size.height(mode))
        .arg(size.visible(mode) ? QStringLiteral("shown") : QStringLiteral("hidden"));
}

QString textOf(const ClickableZone &zone, qint32 mode)
{
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(zone.left(mode))
        .arg(zone.top(mode))
        .arg(zone.right(mode))
        .arg(zone.bottom(mode))
        .arg(zone.visible(mode) ? QStringLiteral("shown") : QStringLiteral("hidden"));
}

ControlSize someSize()
{
    ControlSize size;
    size.SetDefValues(1, 2, 3, 4, true, 0);
    size.SetDefValues(5, 6, 7, 8, false, 1);
    return size;
}

} // namespace

class TestSkinModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultsGoIntoOneLayoutOnly();
    void anyModeButZeroIsAdvanced();
    void widthAndHeightAreWrittenPerLayout();
    void controlReadsBothLayouts();
    void controlNeedsAllFourClassicNumbers_data();
    void controlNeedsAllFourClassicNumbers();
    void failedReadKeepsWhatFollows();
    void zeroInAdvancedIsAccepted();
    void numberOutOfRangeCountsAsZero();
    void positionNeedsBothClassicNumbers();
    void positionKeepsTheSize();
    void onlyTheWordFalseHides_data();
    void onlyTheWordFalseHides();
    void keysOfOtherSectionsDoNotCount();
    void valuesAreAssignedInOrder();
    void errorsOfAssignedValuesAreIgnored();
    void positionIsAssignedInOrder();
    void errorsOfAnAssignedPositionArePassedOn();

    void zoneKeepsCorners();
    void edgesAreOutsideTheZone();
    void visibilityDoesNotMatterToIsInside();
    void zoneOfNoWidthOrWithoutXFails();
    void zoneMayBeginAtTheTop();
    void zoneThatEndsAtZeroFails();
    void cornerOutsideOf16BitsIsAnError();
    void zoneReadsBothLayouts();

    void formReadsPictureAndSizes();
    void formNeedsItsPicture();
    void formNeedsItsSize();
    void formDefaultsKeepThePicture();
    void advancedLayoutClearsThePicture();
    void builtInLayoutKeepsTheWindowsPicture();
    void errorsOfAWindowArePassedOn();
    void pictureReadsTheClassicOneOnly();
    void pictureThatIsMissingKeepsTheOldOne();
    void errorsOfAPictureArePassedOn();
};

void TestSkinModel::defaultsGoIntoOneLayoutOnly()
{
    auto size = someSize();
    QCOMPARE(textOf(size, 0), QStringLiteral("1 2 3 4 shown"));
    QCOMPARE(textOf(size, 1), QStringLiteral("5 6 7 8 hidden"));
    size.SetDefValues(9, 9, 9, 9, false, 0);
    QCOMPARE(textOf(size, 1), QStringLiteral("5 6 7 8 hidden"));
    size.SetDefValues(7, 7, 7, 7, true, 1);
    QCOMPARE(textOf(size, 0), QStringLiteral("9 9 9 9 hidden"));
}

void TestSkinModel::anyModeButZeroIsAdvanced()
{
    const auto size = someSize();
    for (const qint32 mode : {1, 2, -1, 65536, INT_MIN})
        QCOMPARE(size.X(mode), 5);
}

void TestSkinModel::widthAndHeightAreWrittenPerLayout()
{
    auto size = someSize();
    size.width(30, 0);
    size.height(80, 7);
    QCOMPARE(textOf(size, 0), QStringLiteral("1 2 30 4 shown"));
    QCOMPARE(textOf(size, 1), QStringLiteral("5 6 7 80 hidden"));
}

void TestSkinModel::controlReadsBothLayouts()
{
    ControlSize size;
    QVERIFY(size.SetValues(iniOf("PosX=11 PosY=12 Width=13 Height=14 Visible=false",
                                 "PosX=21 PosY=22 Width=23 Height=24"),
                           Name, Section));
    QCOMPARE(textOf(size, 0), QStringLiteral("11 12 13 14 hidden"));
    QCOMPARE(textOf(size, 1), QStringLiteral("21 22 23 24 shown"));
}

void TestSkinModel::controlNeedsAllFourClassicNumbers_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("X") << QByteArray("PosX=0 PosY=12 Width=13 Height=14");
    QTest::newRow("Y") << QByteArray("PosX=11 PosY=x Width=13 Height=14");
    QTest::newRow("width") << QByteArray("PosX=11 PosY=12 Height=14");
    QTest::newRow("height") << QByteArray("PosX=11 PosY=12 Width=13 Height=0.4");
}

void TestSkinModel::controlNeedsAllFourClassicNumbers()
{
    QFETCH(const QByteArray, keys);
    ControlSize size;
    QVERIFY(!size.SetValues(iniOf(keys.constData()), Name, Section));
}

void TestSkinModel::failedReadKeepsWhatFollows()
{
    auto size = someSize();
    QVERIFY(!size.SetValues(iniOf("PosX=11 PosY=12 Width=13 Visible=false", "PosX=21 Visible=true"),
                            Name, Section));
    QCOMPARE(textOf(size, 0), QStringLiteral("11 12 13 0 shown"));
    QCOMPARE(textOf(size, 1), QStringLiteral("5 6 7 8 hidden"));
}

void TestSkinModel::zeroInAdvancedIsAccepted()
{
    auto size = someSize();
    QVERIFY(size.SetValues(iniOf("PosX=11 PosY=12 Width=13 Height=14", "PosX=0"), Name, Section));
    QCOMPARE(textOf(size, 1), QStringLiteral("0 0 0 0 shown"));
}

void TestSkinModel::numberOutOfRangeCountsAsZero()
{
    ControlSize size;
    QVERIFY(!size.SetValues(iniOf("PosX=40000 PosY=12 Width=13 Height=14"), Name, Section));
    QVERIFY(size.SetValues(iniOf("PosX=-32768 PosY=12 Width=13 Height=14"), Name, Section));
}

void TestSkinModel::positionNeedsBothClassicNumbers()
{
    ControlSize size;
    QVERIFY(!size.SetPos(iniOf("PosX=11"), Name, Section));
    QVERIFY(!size.SetPos(iniOf("PosY=12"), Name, Section));
    QVERIFY(size.SetPos(iniOf("PosX=11 PosY=12"), Name, Section));
}

void TestSkinModel::positionKeepsTheSize()
{
    auto size = someSize();
    QVERIFY(size.SetPos(iniOf("PosX=11 PosY=12 Width=99 Visible=FALSE", "PosX=21 Height=99"), Name,
                        Section));
    QCOMPARE(textOf(size, 0), QStringLiteral("11 12 3 4 hidden"));
    QCOMPARE(textOf(size, 1), QStringLiteral("21 0 7 8 shown"));
}

void TestSkinModel::onlyTheWordFalseHides_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("visible");
    QTest::newRow("lower case") << QStringLiteral("false") << false;
    QTest::newRow("upper case") << QStringLiteral("FALSE") << false;
    QTest::newRow("mixed") << QStringLiteral("False") << false;
    QTest::newRow("zero") << QStringLiteral("0") << true;
    QTest::newRow("no") << QStringLiteral("no") << true;
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("more behind") << QStringLiteral("false.") << true;
}

void TestSkinModel::onlyTheWordFalseHides()
{
    QFETCH(const QString, value);
    auto ini = iniOf("PosX=11 PosY=12 Width=13 Height=14");
    ini.SetVar(QStringLiteral("ClassicZoneVisible"), Section, value);
    ControlSize size;
    QVERIFY(size.SetValues(ini, Name, Section));
    QTEST(size.visible(0), "visible");
}

void TestSkinModel::keysOfOtherSectionsDoNotCount()
{
    ControlSize size;
    QVERIFY(!size.SetValues(iniOf("PosX=11 PosY=12 Width=13 Height=14"), Name,
                            QStringLiteral("Other")));
}

void TestSkinModel::valuesAreAssignedInOrder()
{
    RecordedWindow window;
    someSize().AssignValues(*window.find(QLatin1StringView("a")), 1);
    QCOMPARE(window.record(),
             QStringList({QStringLiteral("a.visible=false"), QStringLiteral("a.width=7"),
                          QStringLiteral("a.height=8"), QStringLiteral("a.Left=5"),
                          QStringLiteral("a.Top=6")}));
}

/// A control that lacks one of the properties still receives the others.
void TestSkinModel::errorsOfAssignedValuesAreIgnored()
{
    RecordedWindow window;
    window.refuse(QStringLiteral("a.visible"));
    window.refuse(QStringLiteral("a.height"));
    someSize().AssignValues(*window.find(QLatin1StringView("a")), 0);
    QCOMPARE(window.record(), QStringList({QStringLiteral("a.width=3"), QStringLiteral("a.Left=1"),
                                           QStringLiteral("a.Top=2")}));
}

void TestSkinModel::positionIsAssignedInOrder()
{
    RecordedWindow window;
    someSize().AssignPos(*window.find(QLatin1StringView("a")), 0);
    QCOMPARE(window.record(), QStringList({QStringLiteral("a.visible=true"),
                                           QStringLiteral("a.Left=1"), QStringLiteral("a.Top=2")}));
}

void TestSkinModel::errorsOfAnAssignedPositionArePassedOn()
{
    RecordedWindow window;
    window.refuse(QStringLiteral("a.Left"));
    QVERIFY_EXCEPTION_THROWN(someSize().AssignPos(*window.find(QLatin1StringView("a")), 0),
                             NumberedError);
    QCOMPARE(window.record(), QStringList({QStringLiteral("a.visible=true")}));
}

void TestSkinModel::zoneKeepsCorners()
{
    ClickableZone zone;
    zone.SetDefValues(10, 20, 30, 40, true, 0);
    QCOMPARE(textOf(zone, 0), QStringLiteral("10 20 40 60 shown"));
    QCOMPARE(textOf(zone, 1), QStringLiteral("0 0 0 0 hidden"));
}

void TestSkinModel::edgesAreOutsideTheZone()
{
    ClickableZone zone;
    zone.SetDefValues(10, 20, 30, 40, true, 0);
    QVERIFY(zone.IsInside(11, 21, 0));
    QVERIFY(zone.IsInside(39, 59, 0));
    QVERIFY(!zone.IsInside(10, 30, 0));
    QVERIFY(!zone.IsInside(40, 30, 0));
    QVERIFY(!zone.IsInside(20, 20, 0));
    QVERIFY(!zone.IsInside(20, 60, 0));
    QVERIFY(!zone.IsInside(20, 30, 1));
}

void TestSkinModel::visibilityDoesNotMatterToIsInside()
{
    ClickableZone zone;
    zone.SetDefValues(10, 20, 30, 40, false, 0);
    QVERIFY(zone.IsInside(11, 21, 0));
}

void TestSkinModel::zoneOfNoWidthOrWithoutXFails()
{
    ClickableZone zone;
    QVERIFY(!zone.SetValues(iniOf("PosX=11 PosY=12 Width=0 Height=14"), Name, Section));
    QVERIFY(!zone.SetValues(iniOf("PosX=0 PosY=12 Width=13 Height=14"), Name, Section));
    QVERIFY(!zone.SetValues(iniOf("PosX=11 PosY=12 Width=13 Height=0"), Name, Section));
}

/// Only the left edge must not be 0.
void TestSkinModel::zoneMayBeginAtTheTop()
{
    ClickableZone zone;
    QVERIFY(zone.SetValues(iniOf("PosX=11 PosY=0 Width=13 Height=14"), Name, Section));
}

void TestSkinModel::zoneThatEndsAtZeroFails()
{
    ClickableZone zone;
    QVERIFY(!zone.SetValues(iniOf("PosX=-13 PosY=1 Width=13 Height=14"), Name, Section));
}

void TestSkinModel::cornerOutsideOf16BitsIsAnError()
{
    ClickableZone zone;
    zone.SetDefValues(1, 2, 3, 4, true, 0);
    const auto before = zone;
    QVERIFY_EXCEPTION_THROWN(zone.SetDefValues(32767, 2, 1, 4, true, 0), NumberedError);
    QVERIFY_EXCEPTION_THROWN(zone.SetDefValues(1, -32768, 3, -1, true, 0), NumberedError);
    QVERIFY(zone == before);
    QVERIFY(!zone.SetValues(iniOf("PosX=32767 PosY=2 Width=1 Height=4"), Name, Section));
    QVERIFY(!zone.SetValues(
        iniOf("PosX=1 PosY=2 Width=3 Height=4", "PosX=1 PosY=2 Width=3 Height=32767"), Name,
        Section));
    zone.SetDefValues(32766, 2, 1, 4, true, 0);
    QCOMPARE(zone.right(0), 32767);
}

void TestSkinModel::zoneReadsBothLayouts()
{
    ClickableZone zone;
    QVERIFY(zone.SetValues(
        iniOf("PosX=11 PosY=12 Width=13 Height=14 Visible=false", "PosX=0 PosY=0 Width=0 Height=0"),
        Name, Section));
    QCOMPARE(textOf(zone, 0), QStringLiteral("11 12 24 26 hidden"));
    QCOMPARE(textOf(zone, 1), QStringLiteral("0 0 0 0 shown"));
}

void TestSkinModel::formReadsPictureAndSizes()
{
    const Context context;
    FormData form(context);
    QVERIFY(
        form.SetValues(iniOf("Picture=7 Width=13 Height=14", "Width=23 Picture=8"), Name, Section));
    QCOMPARE(form.picture(0).logicalSize(), QSize(7, 7));
    QVERIFY(form.picture(1).isEmpty());
    QCOMPARE(form.width(0), 13);
    QCOMPARE(form.height(0), 14);
    QCOMPARE(form.width(1), 23);
    QCOMPARE(form.height(1), 0);
}

void TestSkinModel::formNeedsItsPicture()
{
    const Context context;
    FormData form(context);
    QVERIFY(!form.SetValues(iniOf("Picture=x Width=13 Height=14"), Name, Section));
    QCOMPARE(form.width(0), 0);
}

void TestSkinModel::formNeedsItsSize()
{
    const Context context;
    FormData form(context);
    form.SetDefValues(1, 2, 1);
    QVERIFY(!form.SetValues(iniOf("Picture=7 Width=13", "Width=99"), Name, Section));
    QVERIFY(!form.SetValues(iniOf("Picture=7 Height=14", "Width=99"), Name, Section));
    QCOMPARE(form.width(1), 1);
}

void TestSkinModel::formDefaultsKeepThePicture()
{
    const Context context;
    FormData form(context);
    QVERIFY(form.SetValues(iniOf("Picture=7 Width=13 Height=14"), Name, Section));
    form.SetDefValues(1, 2, 0);
    QCOMPARE(form.width(0), 1);
    QCOMPARE(form.picture(0).logicalSize(), QSize(7, 7));
    form.clearPicture(0);
    QVERIFY(form.picture(0).isEmpty());
}

/// No description fills the Advanced picture, so that the window loses its own.
void TestSkinModel::advancedLayoutClearsThePicture()
{
    const Context context;
    FormData form(context);
    RecordedWindow window;
    QVERIFY(
        form.SetValues(iniOf("Picture=7 Width=13 Height=14", "Width=23 Height=24"), Name, Section));
    form.AssignValues(WindowRef(window), 0);
    form.AssignValues(WindowRef(window), 1);
    QCOMPARE(
        window.record(),
        QStringList({QStringLiteral("window.size=13x14"), QStringLiteral("window.Picture=7x7"),
                     QStringLiteral("window.size=23x24"), QStringLiteral("window.Picture=0x0")}));
}

void TestSkinModel::builtInLayoutKeepsTheWindowsPicture()
{
    Context context;
    context.name = QStringLiteral("None");
    FormData form(context);
    form.SetDefValues(13, 14, 0);
    RecordedWindow window;
    form.AssignValues(WindowRef(window), 0);
    QCOMPARE(window.record(), QStringList({QStringLiteral("window.size=13x14")}));
}

void TestSkinModel::errorsOfAWindowArePassedOn()
{
    const Context context;
    const FormData form(context);
    RecordedWindow window;
    window.refuse(QStringLiteral("window.Picture"));
    QVERIFY_EXCEPTION_THROWN(form.AssignValues(WindowRef(window), 0), NumberedError);
    window.refuse(QStringLiteral("window.size"));
    QVERIFY_EXCEPTION_THROWN(form.AssignValues(WindowRef(window), 0), NumberedError);
}

void TestSkinModel::pictureReadsTheClassicOneOnly()
{
    const Context context;
    PictureData data(context);
    RecordedWindow window;
    QVERIFY(data.SetValues(iniOf("Picture=7", "Picture=8"), Name, Section));
    auto &target = *window.find(QLatin1StringView("a"));
    data.AssignValues(target, 0);
    data.AssignValues(target, 1);
    QCOMPARE(window.record(),
             QStringList({QStringLiteral("a.Picture=7x7"), QStringLiteral("a.Picture=0x0")}));
}

void TestSkinModel::pictureThatIsMissingKeepsTheOldOne()
{
    const Context context;
    PictureData data(context);
    QVERIFY(data.SetValues(iniOf("Picture=7"), Name, Section));
    QVERIFY(!data.SetValues(iniOf("Picture=x"), Name, Section));
    QCOMPARE(data.picture(0).logicalSize(), QSize(7, 7));
}

void TestSkinModel::errorsOfAPictureArePassedOn()
{
    const Context context;
    const PictureData data(context);
    RecordedWindow window;
    window.refuse(QStringLiteral("a.Picture"));
    QVERIFY_EXCEPTION_THROWN(data.AssignValues(*window.find(QLatin1StringView("a")), 0),
                             NumberedError);
}

QTEST_GUILESS_MAIN(TestSkinModel)
#include "tst_skinmodel.moc"
