#include "ShippedSkin.h"

#include <QTest>

using namespace Quorlin;

namespace {

const QStringList &skins()
{
    static const QStringList names{QStringLiteral("Varnex"), QStringLiteral("Nightfall"),
                                   QStringLiteral("Clarity")};
    return names;
}

void addSkins()
{
    QTest::addColumn<QString>("skin");
    for (const auto &name : skins())
        QTest::newRow(qPrintable(name)) << name;
}

/// A pair of colours; or a colour and the element whose place in a picture it is written on.
struct Writing
{
    LookColour text;
    std::optional<LookColour> ground;
    const char *element = nullptr;
    const char *picture = nullptr;
};

const QList<std::pair<const char *, Writing>> &writings()
{
    using enum LookColour;
    static const QList<std::pair<const char *, Writing>> all{
        {"list", {ListText, List}},
        {"selection", {SelectionText, Selection}},
        {"field", {FieldText, Field}},
        {"accent", {AccentText, Accent}},
        {"progress to do", {ProgressText, ProgressBack}},
        {"progress done", {ProgressDoneText, Progress}},
        {"menu", {MenuText, Menu}},
        {"mail caption", {Text, {}, "OptMail", "Main"}},
        {"show caption", {Text, {}, "OptShow", "Main"}},
        {"link caption", {Text, {}, "OptLink", "Main"}},
        {"compression caption", {Text, {}, "LibCompress", "Main"}},
        {"title", {Title, {}, "Title", "Main"}},
        {"convert caption", {ConvertText, {}, "LibConvert", "Main"}},
        {"information", {InfoText, {}, "LabelInfo", "Info"}},
        {"about title", {Title, {}, "AboutTitle", "About"}},
        {"product", {Text, {}, "AboutProductName", "About"}},
        {"copyright", {Text, {}, "AboutCopyright", "About"}},
        {"notice title", {Text, {}, "AboutAdobeTitle", "About"}},
        {"notice", {Text, {}, "AboutAdobeInfo", "About"}},
        {"notice trademarks", {Text, {}, "AboutAdobeCopyright", "About"}},
    };
    return all;
}

double contrastOf(ShippedSkin &skin, LookColour text, const Writing &where)
{
    const auto ink = skin.look().colour(text);
    if (where.ground)
        return contrast(ink, skin.look().colour(*where.ground));
    return skin.lowestContrast(ink, where.picture, where.element);
}

/// What lies behind the caption of a button that cannot be used.
QColor veiled(const QColor &veil, const QColor &point)
{
    const auto mix = [](float over, float under) { return 0.72F * over + 0.28F * under; };
    return QColor::fromRgbF(mix(veil.redF(), point.redF()), mix(veil.greenF(), point.greenF()),
                            mix(veil.blueF(), point.blueF()));
}

double contrastUnderVeil(ShippedSkin &skin, const char *element)
{
    const auto points = skin.picture("Main").imageFor(skin.pictureSize("Main"));
    const auto index = SkinElement::indexOf(QLatin1StringView(element));
    const auto place = skin.placeOf(SkinElement::all()[index.value()], 0).value();
    const auto ink = skin.look().colour(LookColour::DisabledText);
    const auto veil = skin.look().colour(LookColour::Veil);
    double lowest = 21;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            lowest = std::min(lowest, contrast(ink, veiled(veil, points.pixelColor(x, y))));
    }
    return lowest;
}

void checkContrast(double found, double wanted)
{
    QVERIFY2(
        found >= wanted,
        qPrintable(
            QStringLiteral("contrast %1, wanted %2").arg(found, 0, 'f', 2).arg(wanted, 0, 'f', 1)));
}

} // namespace

class TestShippedSkins : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySkinIsTested();
    void loadsWithoutAMessageInBothLayouts_data() { addSkins(); }
    void loadsWithoutAMessageInBothLayouts();
    void descriptionHasWindowsLineEnds_data() { addSkins(); }
    void descriptionHasWindowsLineEnds();
    void picturesFillTheirPlaces_data() { addSkins(); }
    void picturesFillTheirPlaces();
    void elementsLieInTheirWindow_data() { addSkins(); }
    void elementsLieInTheirWindow();
    void elementsDoNotOverlap_data() { addSkins(); }
    void elementsDoNotOverlap();
    void textHasContrast_data();
    void textHasContrast();
    void disabledTextHasContrast_data() { addSkins(); }
    void disabledTextHasContrast();
    void builtInLookHasContrast();
    void contrastIsMeasuredAsDefined();
};

void TestShippedSkins::everySkinIsTested()
{
    auto folders = QDir(QStringLiteral(QUORLIN_SOURCE_DIR "/data/skins"))
                       .entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    auto names = skins();
    names.sort();
    folders.sort();
    QCOMPARE(folders, names);
}

void TestShippedSkins::loadsWithoutAMessageInBothLayouts()
{
    QFETCH(const QString, skin);
    ShippedSkin shipped(skin);
    QCOMPARE(shipped.messages(), QStringList());
    QCOMPARE(shipped.engine().GetSkinName(), skin);
    QVERIFY(shipped.engine().GetMinimiseZone());
    shipped.engine().ApplySkin(1);
    for (const auto &element : SkinElement::all()) {
        if (const auto *const control = shipped.engine().objects().control(element.name)) {
            QVERIFY(control->X(1) > 0 && control->Y(1) > 0);
            QVERIFY(element.kind == SkinKind::Position ||
                    (control->width(1) > 0 && control->height(1) > 0));
        }
    }
}

void TestShippedSkins::descriptionHasWindowsLineEnds()
{
    QFETCH(const QString, skin);
    const auto bytes = contentOf(ShippedSkin::pathOf(skin) + QLatin1String("/Info.ssk"));
    QVERIFY(bytes.endsWith("\r\n"));
    QCOMPARE(bytes.count('\n'), bytes.count("\r\n"));
    QCOMPARE(bytes.count('\r'), bytes.count("\r\n"));
}

void TestShippedSkins::picturesFillTheirPlaces()
{
    QFETCH(const QString, skin);
    ShippedSkin shipped(skin);
    for (const auto *name : {"Main", "About", "Info"}) {
        const auto picture = shipped.picture(name);
        const auto place = shipped.pictureSize(name);
        QCOMPARE(picture.logicalSize(), place);
        QCOMPARE(picture.imageFor(2 * place).size(), 2 * place);
    }
}

void TestShippedSkins::elementsLieInTheirWindow()
{
    QFETCH(const QString, skin);
    ShippedSkin shipped(skin);
    for (const auto mode : {0, 1}) {
        for (const auto &element : SkinElement::all()) {
            const auto place = shipped.placeOf(element, mode);
            if (!place)
                continue;
            const auto inside = shipped.surroundingsOf(element, mode).contains(*place);
            QVERIFY2(inside, element.name.data());
        }
    }
}

void TestShippedSkins::elementsDoNotOverlap()
{
    QFETCH(const QString, skin);
    ShippedSkin shipped(skin);
    for (const auto mode : {0, 1})
        QCOMPARE(shipped.overlaps(mode), QStringList());
}

void TestShippedSkins::textHasContrast_data()
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<int>("writing");
    for (const auto &skin : skins()) {
        for (int at = 0; at < writings().size(); ++at)
            QTest::addRow("%s, %s", qPrintable(skin), writings().at(at).first) << skin << at;
    }
}

void TestShippedSkins::textHasContrast()
{
    QFETCH(const QString, skin);
    QFETCH(const int, writing);
    ShippedSkin shipped(skin);
    const auto &where = writings().at(writing).second;
    checkContrast(contrastOf(shipped, where.text, where),
                  skin == QLatin1String("Clarity") ? 7.0 : 4.5);
}

void TestShippedSkins::disabledTextHasContrast()
{
    QFETCH(const QString, skin);
    ShippedSkin shipped(skin);
    for (const auto &[name, where] : writings()) {
        if (where.element && where.text == LookColour::Text && QByteArray(where.picture) == "Main")
            checkContrast(contrastOf(shipped, LookColour::DisabledText, where), 3.0);
    }
    const auto field = contrast(shipped.look().colour(LookColour::DisabledText),
                                shipped.look().colour(LookColour::Field));
    checkContrast(field, 3.0);
    checkContrast(contrastUnderVeil(shipped, "LibConvert"), 3.0);
}

void TestShippedSkins::builtInLookHasContrast()
{
    const SkinLook look;
    for (const auto &[name, where] : writings()) {
        if (where.ground)
            checkContrast(contrast(look.colour(where.text), look.colour(*where.ground)), 4.5);
    }
}

void TestShippedSkins::contrastIsMeasuredAsDefined()
{
    QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(contrast(Qt::white, Qt::black), 21.0);
    QCOMPARE(contrast(Qt::white, Qt::white), 1.0);
    QVERIFY(qAbs(contrast(QColor(0x77, 0x77, 0x77), Qt::white) - 4.48) < 0.01);
}

QTEST_MAIN(TestShippedSkins)
#include "tst_shippedskins.moc"
