#include "ExpectedElements.h"
#include "SkinScene.h"

#include <QTest>

using namespace Quorlin;

namespace {

enum class Layout { BuiltIn, Classic, Advanced };

struct Values
{
    int x;
    int y;
    int width;
    int height;
    bool visible;
};

/// What an element of the sample description holds.
Values valuesOf(const ExpectedElement &row, Layout layout)
{
    if (layout == Layout::BuiltIn)
        return {row.x, row.y, row.width, row.height, row.visible};
    const auto number =
        SkinText::numberOf(QLatin1StringView(row.name)) + (layout == Layout::Advanced ? 1000 : 0);
    if (QByteArray(row.kind) == "position")
        return {100 + number, 200 + number, row.width, row.height, true};
    return {100 + number, 200 + number, 300 + number, 400 + number, true};
}

/// What a window must be told of an element.
QStringList assignments(const ExpectedElement &row, Layout layout)
{
    const auto values = valuesOf(row, layout);
    const auto line = [&row](const char *property, const QVariant &value) {
        return QString::fromLatin1(row.control) + QLatin1Char('.') + QLatin1String(property) +
               QLatin1Char('=') + value.toString();
    };
    const QByteArray kind(row.kind);
    const auto picture = layout == Layout::Classic ? QStringLiteral("12x9") : QStringLiteral("0x0");
    if (kind == "picture")
        return layout == Layout::BuiltIn ? QStringList() : QStringList{line("Picture", picture)};
    if (kind == "window") {
        QStringList lines{
            line("size", QStringLiteral("%1x%2").arg(values.width).arg(values.height))};
        if (layout != Layout::BuiltIn)
            lines << line("Picture", picture);
        return lines;
    }
    QStringList lines{line("visible", values.visible)};
    if (kind == "geometry")
        lines << line("width", values.width) << line("height", values.height);
    return lines << line("Left", values.x) << line("Top", values.y);
}

void addRows()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < ExpectedElement::all().size(); ++index)
        QTest::newRow(ExpectedElement::all().at(index).name) << index;
}

const ExpectedElement &currentRow()
{
    const auto rows = ExpectedElement::all().size();
    QFETCH(const int, index);
    Q_ASSERT(index < rows);
    return ExpectedElement::all().at(index);
}

/// What was done to the element's control, without what its neighbour in the table did to it:
/// the information panel has two elements.
QStringList recordOf(SkinScene &scene, const ExpectedElement &row)
{
    auto record = (row.inMainWindow ? scene.main() : scene.about())
                      .recordOf(QString::fromLatin1(row.control));
    const auto isPanel = QByteArray(row.control) == "PctInfo";
    const auto isPicture = QByteArray(row.kind) == "picture";
    if (isPanel) {
        record.removeIf([isPicture](const auto &line) {
            return line.startsWith(QLatin1String("PctInfo.Picture=")) != isPicture;
        });
    }
    return record;
}

} // namespace

class TestSkinTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreThoseExpected();
    void builtInLayoutIsApplied_data() { addRows(); }
    void builtInLayoutIsApplied();
    void classicLayoutIsReadAndApplied_data() { addRows(); }
    void classicLayoutIsReadAndApplied();
    void advancedLayoutIsReadAndApplied_data() { addRows(); }
    void advancedLayoutIsReadAndApplied();
    void elementThatIsMissingMakesTheSkinInvalid_data() { addRows(); }
    void elementThatIsMissingMakesTheSkinInvalid();
    void eachClassicKeyIsNeeded_data() { addRows(); }
    void eachClassicKeyIsNeeded();
    void noAdvancedKeyIsNeeded_data() { addRows(); }
    void noAdvancedKeyIsNeeded();
    void textModeSkipsFourElements_data() { addRows(); }
    void textModeSkipsFourElements();
    void readingStopsAtTheFirstFailure_data() { addRows(); }
    void readingStopsAtTheFirstFailure();
    void controlsAreLaidOutInOrder();
    void objectsStayTheSame();
};

void TestSkinTable::rowsAreThoseExpected()
{
    const auto rows = SkinElement::all();
    QCOMPARE(qsizetype(rows.size()), ExpectedElement::all().size());
    for (std::size_t at = 0; at < rows.size(); ++at) {
        const auto &expected = ExpectedElement::all().at(qsizetype(at));
        QCOMPARE(rows[at].name, QLatin1StringView(expected.name));
        QCOMPARE(rows[at].section, QLatin1StringView(expected.section));
        QCOMPARE(rows[at].skippedInTextMode, expected.skippedAsText);
    }
}

void TestSkinTable::builtInLayoutIsApplied()
{
    const auto &row = currentRow();
    SkinScene scene;
    scene.engine().SetSkin(QStringLiteral("None"));
    QCOMPARE(recordOf(scene, row), assignments(row, Layout::BuiltIn));
    QVERIFY(scene.isBuiltIn());
}

void TestSkinTable::classicLayoutIsReadAndApplied()
{
    const auto &row = currentRow();
    SkinScene scene;
    scene.addSkin("Blue");
    scene.engine().SetSkin(QStringLiteral("Blue"));
    QCOMPARE(scene.messages().all, QStringList());
    QCOMPARE(recordOf(scene, row), assignments(row, Layout::Classic));
}

void TestSkinTable::advancedLayoutIsReadAndApplied()
{
    const auto &row = currentRow();
    SkinScene scene;
    scene.addSkin("Blue");
    scene.engine().SetSkin(QStringLiteral("Blue"));
    scene.clear();
    scene.engine().ApplySkin(1);
    auto expected = assignments(row, Layout::Advanced);
    QCOMPARE(recordOf(scene, row), expected);
}

void TestSkinTable::elementThatIsMissingMakesTheSkinInvalid()
{
    const auto &row = currentRow();
    SkinScene scene;
    scene.addSkin("Blue", SkinText().removeElement(QLatin1StringView(row.name)));
    scene.engine().SetSkin(QStringLiteral("Blue"));
    QCOMPARE(scene.messages().all,
             QStringList{QStringLiteral("0|Error|The skin files Blue are corrupted")});
    QVERIFY(scene.isBuiltIn());
    QCOMPARE(recordOf(scene, row), assignments(row, Layout::BuiltIn));
}

void TestSkinTable::eachClassicKeyIsNeeded()
{
    const auto &row = currentRow();
    const QByteArray kind(row.kind);
    QList<QByteArray> needed;
    if (kind == "position" || kind == "geometry")
        needed << "PosX"
               << "PosY";
    if (kind == "window" || kind == "geometry")
        needed << "Width"
               << "Height";
    if (kind == "window" || kind == "picture")
        needed << "Picture";
    for (const auto &property : needed) {
        SkinScene scene;
        const auto key = QString::fromLatin1("Classic" + QByteArray(row.name) + property);
        scene.addSkin("Blue", SkinText().set(key, QStringLiteral("0")));
        scene.engine().SetSkin(QStringLiteral("Blue"));
        QCOMPARE(scene.messages().all.size(), 1);
        QVERIFY2(scene.isBuiltIn(), property.constData());
    }
}

void TestSkinTable::noAdvancedKeyIsNeeded()
{
    const auto &row = currentRow();
    SkinScene scene;
    SkinText text;
    for (const auto *property : {"PosX", "PosY", "Width", "Height"})
        text.remove(QString::fromLatin1("Advanced" + QByteArray(row.name) + property));
    scene.addSkin("Blue", text);
    scene.engine().SetSkin(QStringLiteral("Blue"));
    QCOMPARE(scene.messages().all, QStringList());
    QCOMPARE(scene.engine().GetSkinName(), QStringLiteral("Blue"));
}

void TestSkinTable::textModeSkipsFourElements()
{
    const auto &row = currentRow();
    SkinScene scene;
    SkinText text;
    text.set(QStringLiteral("TextMode"), QStringLiteral("1"), QStringLiteral("FormMain"));
    text.removeElement(QLatin1StringView(row.name));
    scene.addSkin("Blue", text);
    scene.engine().SetSkin(QStringLiteral("Blue"));
    QCOMPARE(scene.messages().all.isEmpty(), row.skippedAsText);
    QCOMPARE(scene.engine().isTextMode(), row.skippedAsText);
    if (row.skippedAsText)
        QCOMPARE(recordOf(scene, row), assignments(row, Layout::BuiltIn));
}

/// The Advanced values of what was read before the failure stay, those behind it are untouched.
void TestSkinTable::readingStopsAtTheFirstFailure()
{
    const auto &failing = currentRow();
    SkinScene scene;
    scene.addSkin("Blue", SkinText().removeElement(QLatin1StringView(failing.name)));
    scene.engine().SetSkin(QStringLiteral("Blue"));
    const auto failingNumber = SkinText::numberOf(QLatin1StringView(failing.name));
    for (const auto &row : ExpectedElement::all()) {
        const auto *const control = scene.engine().objects().control(QLatin1StringView(row.name));
        const auto number = SkinText::numberOf(QLatin1StringView(row.name));
        if (control)
            QCOMPARE(int(control->X(1)), number < failingNumber ? 1100 + number : 0);
    }
}

void TestSkinTable::controlsAreLaidOutInOrder()
{
    const auto namesOf = [](const QList<const char *> &names) {
        QStringList texts;
        for (const auto *name : names)
            texts.append(QString::fromLatin1(name));
        return texts;
    };
    SkinScene scene;
    scene.addSkin("Blue");
    scene.engine().SetSkin(QStringLiteral("Blue"));
    QCOMPARE(scene.main().order(), namesOf(ExpectedElement::mainOrder()));
    QCOMPARE(scene.about().order(), namesOf(ExpectedElement::aboutOrder()));
    const auto panel = scene.main().recordOf(QStringLiteral("PctInfo"));
    QVERIFY(panel.first().startsWith(QLatin1String("PctInfo.Picture=")));
}

/// Loading another skin overwrites values in place.
void TestSkinTable::objectsStayTheSame()
{
    SkinScene scene;
    scene.addSkin("Blue");
    const auto *const before = scene.engine().objects().control(QLatin1StringView("Close"));
    scene.engine().SetSkin(QStringLiteral("Blue"));
    QCOMPARE(scene.engine().objects().control(QLatin1StringView("Close")), before);
    QCOMPARE(scene.engine().objects().control(QLatin1StringView("Main")), nullptr);
    QCOMPARE(scene.engine().objects().control(QLatin1StringView("Nothing")), nullptr);
}

QTEST_GUILESS_MAIN(TestSkinTable)
#include "tst_skintable.moc"
