#include "SkinScene.h"
#include "support/SystemActions.h"

#include <QTest>

using namespace Quorlin;

/// The name of a skin comes from the settings, its description from a folder that anybody may
/// have filled.
class TestSkinNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nameNeverLeavesTheSkinsFolder_data();
    void nameNeverLeavesTheSkinsFolder();
    void descriptionThatIsNoFileIsNotFound_data();
    void descriptionThatIsNoFileIsNotFound();
    void pictureOutsideMakesTheSkinInvalid_data();
    void pictureOutsideMakesTheSkinInvalid();
    void garbageIsInvalid_data();
    void garbageIsInvalid();
};

void TestSkinNames::nameNeverLeavesTheSkinsFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("above") << QStringLiteral("../Outside");
    QTest::newRow("above, other separator") << QStringLiteral("..\\Outside");
    QTest::newRow("around") << QStringLiteral("Blue/../../Outside");
    QTest::newRow("parent") << QStringLiteral("..");
    QTest::newRow("itself") << QStringLiteral(".");
    QTest::newRow("absolute") << QStringLiteral("ABSOLUTE");
    QTest::newRow("with a separator behind") << QStringLiteral("Blue/");
    QTest::newRow("inner folder") << QStringLiteral("Blue/inner");
    QTest::newRow("zero") << QStringLiteral("Blue") + QChar(0) + QStringLiteral("x");
    QTest::newRow("blank") << QStringLiteral("Blue ");
    QTest::newRow("pattern") << QStringLiteral("Bl*");
    QTest::newRow("long") << QString(70000, QLatin1Char('x'));
    QTest::newRow("broken character") << QString(QChar(0xD800));
}

void TestSkinNames::nameNeverLeavesTheSkinsFolder()
{
    QFETCH(QString, name);
    SkinScene scene;
    scene.addSkin("Blue");
    scene.addSkin("../Outside");
    scene.addSkin("Blue/inner");
    if (name == QLatin1String("ABSOLUTE"))
        name = scene.folder().path("Outside");
    scene.engine().SetSkin(name);
    QVERIFY(scene.isBuiltIn());
    QCOMPARE(scene.messages().all.size(), 1);
    QVERIFY(
        scene.messages().all.first().endsWith(QLatin1String(" skin : files not found or in use")));
}

void TestSkinNames::descriptionThatIsNoFileIsNotFound_data()
{
    QTest::addColumn<QByteArray>("kind");
    for (const auto *kind : {"folder", "pipe", "device", "broken link", "circle"})
        QTest::newRow(kind) << QByteArray(kind);
}

void TestSkinNames::descriptionThatIsNoFileIsNotFound()
{
    QFETCH(const QByteArray, kind);
    SkinScene scene;
    scene.folder().makeFolder("skins/Blue");
    const auto path = scene.folder().path("skins/Blue/Info.ssk");
    if (kind == "folder")
        scene.folder().makeFolder("skins/Blue/Info.ssk");
    else if (kind == "pipe")
        QVERIFY(SystemActions::makeFifo(path));
    else if (kind == "device")
        QVERIFY(QFile::link(SystemActions::nullDevice(), path));
    else
        QVERIFY(QFile::link(kind == "circle" ? path : QStringLiteral("/nowhere"), path));
    scene.engine().SetSkin(QStringLiteral("Blue"));
    QCOMPARE(
        scene.messages().all,
        QStringList{QStringLiteral("0|Error|Can't load Blue skin : files not found or in use")});
    QVERIFY(scene.isBuiltIn());
}

void TestSkinNames::pictureOutsideMakesTheSkinInvalid_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("above") << QStringLiteral("../../secret.png");
    QTest::newRow("other separator") << QStringLiteral("..\\..\\secret.png");
    QTest::newRow("absolute") << QStringLiteral("ABSOLUTE");
    QTest::newRow("link") << QStringLiteral("link.png");
    QTest::newRow("folder") << QStringLiteral("folder");
    QTest::newRow("pipe") << QStringLiteral("pipe");
    QTest::newRow("device") << QStringLiteral("device");
    QTest::newRow("missing") << QStringLiteral("q.png");
    QTest::newRow("empty") << QString();
    QTest::newRow("no picture") << QStringLiteral("Info.ssk");
}

void TestSkinNames::pictureOutsideMakesTheSkinInvalid()
{
    QFETCH(QString, value);
    SkinScene scene;
    const auto secret = scene.folder().write("secret.png", pngOf(12, 9));
    scene.folder().makeFolder("skins/Blue/folder");
    QVERIFY(SystemActions::makeFifo(scene.folder().path("skins/Blue/pipe")));
    QVERIFY(QFile::link(secret, scene.folder().path("skins/Blue/link.png")));
    QVERIFY(QFile::link(SystemActions::nullDevice(), scene.folder().path("skins/Blue/device")));
    if (value == QLatin1String("ABSOLUTE"))
        value = secret;
    for (const auto *key : {"ClassicMainPicture", "ClassicInfoPicture", "ClassicAboutPicture"}) {
        scene.clear();
        scene.addSkin("Blue", SkinText().set(QString::fromLatin1(key), value));
        scene.engine().SetSkin(QStringLiteral("Blue"));
        QCOMPARE(scene.messages().all,
                 QStringList{QStringLiteral("0|Error|The skin files Blue are corrupted")});
        QVERIFY(scene.isBuiltIn());
    }
}

void TestSkinNames::garbageIsInvalid_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("zeros") << QByteArray(5000, '\0');
    QTest::newRow("high bytes") << QByteArray(5000, '\xFF');
    QTest::newRow("sections") << QByteArray("[").repeated(5000);
    QTest::newRow("one line") << QByteArray(1000000, 'a');
    QTest::newRow("without line ends") << SkinText().bytes().replace("\r\n", " ");
    QTest::newRow("cut") << SkinText().bytes().chopped(400);
}

void TestSkinNames::garbageIsInvalid()
{
    QFETCH(const QByteArray, bytes);
    SkinScene scene;
    scene.addSkin("Blue");
    scene.folder().write("skins/Blue/Info.ssk", bytes);
    scene.engine().SetSkin(QStringLiteral("Blue"));
    QCOMPARE(scene.messages().all,
             QStringList{QStringLiteral("0|Error|The skin files Blue are corrupted")});
    QVERIFY(scene.isBuiltIn());
}

QTEST_GUILESS_MAIN(TestSkinNames)
#include "tst_skinnames.moc"
