#include "SkinScene.h"

#include "ExpectedElements.h"
#include "skin/AppSkin.h"
#include "support/SystemActions.h"
#include "winsupport/NumberedError.h"

#include <QDir>
#include <QTest>

using namespace Quorlin;

namespace {

const auto Blue = QStringLiteral("Blue");
const auto NotFound = QStringLiteral("0|Error|Can't load %1 skin : files not found or in use");
const auto Invalid = QStringLiteral("0|Error|The skin files %1 are corrupted");

QStringList one(const QString &message, const QString &name)
{
    return {message.arg(name)};
}

} // namespace

class TestSkinEngine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beginsWithTheBuiltInLayout();
    void withoutSkinsFolderEverythingIsBuiltIn();
    void folderNamedNoneIsNotListed();
    void everyEntryIsListed();
    void listIsInTheOrderOfTheDirectory();
    void skinsFolderIsFoundInAnyCase();
    void exactNameOfTheSkinsFolderComesFirst();
    void fileInPlaceOfTheSkinsFolderIsNone();
    void missingWidthOfTheCloseButtonIsAnError();
    void theFirstElementThatIsWrongIsNamedForItsAuthor();
    void visibleComparesWithoutCase();
    void textModeOneNeedsFourElementsLess();
    void otherTextModesNeedAllElements_data();
    void otherTextModesNeedAllElements();
    void advancedZerosAreAccepted();
    void missingSkinIsTold();
    void strayFileFailsOnlyWhenChosen();
    void folderWithoutDescriptionIsTold();
    void invalidSkinIsTold();
    void emptyNameAndNoneGiveTheBuiltInLayout();
    void loadingEndsInTheClassicLayout();
    void pathAndNameAreThoseOfTheSkin();
    void failureAfterASkinLeavesNothingOfEither();
    void builtInLayoutKeepsTheWindowsPictures();
    void textModeEndsWithTheSkin();
    void descriptionIsFoundInAnyCase();
    void onlyWindowsThatAreThereAreLaidOut();
    void lateWindowIsLaidOutAlone();
    void missingControlIsLeftOut();
    void refusedPictureIsAnError();
    void nothingIsAppliedWhileAMessageIsShown();
    void skinChosenDuringAMessageComesNext();
    void minimiseZoneIsOptional();
    void lookIsOptional();
    void longNameIsShortenedInTheMessage();
    void programHasOneSkin();
};

void TestSkinEngine::beginsWithTheBuiltInLayout()
{
    SkinScene scene;
    QVERIFY(scene.isBuiltIn());
    QCOMPARE(scene.record(), QStringList());
}

void TestSkinEngine::withoutSkinsFolderEverythingIsBuiltIn()
{
    SkinScene scene;
    QCOMPARE(scene.engine().GetSkinList(), QStringList());
    for (const auto *name : {"Blue", "None", "", "../x"}) {
        scene.clear();
        scene.engine().SetSkin(QString::fromLatin1(name));
        QVERIFY(scene.isBuiltIn());
        QVERIFY(scene.record().contains(QStringLiteral("window.size=421x311")));
        QCOMPARE(scene.messages().all, QStringList());
    }
}

void TestSkinEngine::folderNamedNoneIsNotListed()
{
    SkinScene scene;
    scene.addSkin("None");
    QCOMPARE(scene.engine().GetSkinList(), QStringList());
    scene.engine().SetSkin(QStringLiteral("None"));
    QVERIFY(scene.isBuiltIn());
}

/// That it is no skin shows only when it is chosen.
void TestSkinEngine::everyEntryIsListed()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.folder().makeFolder("skins/empty");
    scene.folder().write("skins/stray.txt", "x");
    scene.folder().write("skins/.hidden", "x");
    QVERIFY(SystemActions::makeFifo(scene.folder().path("skins/pipe")));
    QVERIFY(QFile::link(QStringLiteral("/nowhere"), scene.folder().path("skins/broken")));
    auto names = scene.engine().GetSkinList();
    names.sort();
    QCOMPARE(names, QStringList({QStringLiteral(".hidden"), Blue, QStringLiteral("broken"),
                                 QStringLiteral("empty"), QStringLiteral("pipe"),
                                 QStringLiteral("stray.txt")}));
}

void TestSkinEngine::listIsInTheOrderOfTheDirectory()
{
    SkinScene scene;
    for (const auto *name : {"c", "a", "d", "b", "f", "e"})
        scene.addSkin(name);
    const QDir folder(scene.folder().path("skins"));
    QCOMPARE(scene.engine().GetSkinList(),
             folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Unsorted));
}

void TestSkinEngine::skinsFolderIsFoundInAnyCase()
{
    SkinScene scene;
    scene.addSkin("Blue");
    QVERIFY(QDir(scene.folder().path()).rename(QStringLiteral("skins"), QStringLiteral("Skins")));
    QCOMPARE(scene.engine().GetSkinList(), QStringList{Blue});
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.engine().GetSkinPath(), scene.folder().path("Skins/Blue"));
    QVERIFY(QDir(scene.engine().GetSkinPath()).exists());
    QCOMPARE(scene.messages().all, QStringList());
}

void TestSkinEngine::exactNameOfTheSkinsFolderComesFirst()
{
    SkinScene scene;
    scene.folder().makeFolder("SKINS/Red");
    scene.folder().makeFolder("Skins/Green");
    scene.addSkin("Blue");
    QCOMPARE(scene.engine().GetSkinList(), QStringList{Blue});
}

void TestSkinEngine::fileInPlaceOfTheSkinsFolderIsNone()
{
    SkinScene scene;
    scene.folder().write("skins", "x");
    QCOMPARE(scene.engine().GetSkinList(), QStringList());
}

void TestSkinEngine::missingWidthOfTheCloseButtonIsAnError()
{
    SkinScene scene;
    scene.addSkin("Blue", SkinText().remove(QStringLiteral("ClassicCloseWidth")));
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all, one(Invalid, Blue));
    QVERIFY(scene.isBuiltIn());
}

void TestSkinEngine::theFirstElementThatIsWrongIsNamedForItsAuthor()
{
    const auto expect = [](const char *removed, const char *warning) {
        SkinScene scene;
        scene.addSkin("Blue", SkinText()
                                  .remove(QString::fromLatin1(removed))
                                  .remove(QStringLiteral("ClassicAboutCloseWidth")));
        QTest::ignoreMessage(QtWarningMsg, warning);
        scene.engine().SetSkin(Blue);
        QCOMPARE(scene.messages().all, one(Invalid, Blue));
    };
    expect("ClassicBtnNextHeight", "Blue/Info.ssk: BtnNext in [Liste] lacks a Classic value");
    expect("ClassicInfoPicture", "Blue/Info.ssk: Info in [Info] lacks its picture");
    expect("ClassicMainWidth",
           "Blue/Info.ssk: Main in [FormMain] lacks its picture or a Classic size");
}

void TestSkinEngine::visibleComparesWithoutCase()
{
    for (const auto &[value, visible] :
         {std::pair("FALSE", false), std::pair("0", true), std::pair("no", true)}) {
        SkinScene scene;
        scene.addSkin("Blue",
                      SkinText().set(QStringLiteral("ClassicCloseVisible"),
                                     QString::fromLatin1(value), QStringLiteral("FormMain")));
        scene.engine().SetSkin(Blue);
        QCOMPARE(scene.main().recordOf(QStringLiteral("lblClose")).first(),
                 visible ? QStringLiteral("lblClose.visible=true")
                         : QStringLiteral("lblClose.visible=false"));
    }
}

void TestSkinEngine::textModeOneNeedsFourElementsLess()
{
    SkinScene scene;
    SkinText text;
    for (const auto *name : {"Icon", "Title", "LibCompress", "LibConvert"})
        text.removeElement(QString::fromLatin1(name));
    text.set(QStringLiteral("TextMode"), QStringLiteral("1"), QStringLiteral("FormMain"));
    scene.addSkin("Blue", text);
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all, QStringList());
    QVERIFY(scene.engine().isTextMode());
    QCOMPARE(scene.engine().GetSkinName(), Blue);
    QVERIFY(scene.main().record().contains(QStringLiteral("lblTitle.visible=false")));
}

void TestSkinEngine::otherTextModesNeedAllElements_data()
{
    QTest::addColumn<QString>("value");
    for (const auto *value : {"yes", "0", "", "01", "1.0", "true", "1 1"})
        QTest::newRow(*value ? value : "empty") << QString::fromLatin1(value);
}

void TestSkinEngine::otherTextModesNeedAllElements()
{
    QFETCH(const QString, value);
    SkinScene scene;
    SkinText text;
    text.set(QStringLiteral("TextMode"), value, QStringLiteral("FormMain"));
    scene.addSkin("Blue", text);
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all, QStringList());
    QVERIFY(!scene.engine().isTextMode());
    scene.addSkin("Blue", text.removeElement(QStringLiteral("Title")));
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all, one(Invalid, Blue));
}

void TestSkinEngine::advancedZerosAreAccepted()
{
    SkinScene scene;
    SkinText text;
    for (const auto *key : {"AdvancedClosePosX", "AdvancedMainWidth", "AdvancedIconPosY"})
        text.set(QString::fromLatin1(key), QStringLiteral("0"));
    scene.addSkin("Blue", text);
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all, QStringList());
    QCOMPARE(scene.engine().GetSkinName(), Blue);
}

void TestSkinEngine::missingSkinIsTold()
{
    SkinScene scene;
    scene.addSkin("Red");
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all, one(NotFound, Blue));
    QVERIFY(scene.isBuiltIn());
    QVERIFY(scene.record().contains(QStringLiteral("window.size=421x311")));
}

void TestSkinEngine::strayFileFailsOnlyWhenChosen()
{
    SkinScene scene;
    scene.folder().write("skins/stray.txt", "x");
    QCOMPARE(scene.engine().GetSkinList(), QStringList{QStringLiteral("stray.txt")});
    scene.engine().SetSkin(QStringLiteral("stray.txt"));
    QCOMPARE(scene.messages().all, one(NotFound, QStringLiteral("stray.txt")));
}

void TestSkinEngine::folderWithoutDescriptionIsTold()
{
    SkinScene scene;
    scene.folder().makeFolder("skins/Blue");
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all, one(NotFound, Blue));
}

void TestSkinEngine::invalidSkinIsTold()
{
    SkinScene scene;
    scene.folder().write("skins/Blue/Info.ssk", "[FormMain]\r\n");
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all, one(Invalid, Blue));
    QVERIFY(scene.isBuiltIn());
}

void TestSkinEngine::emptyNameAndNoneGiveTheBuiltInLayout()
{
    SkinScene scene;
    scene.addSkin("Blue");
    for (const auto *name : {"", "None"}) {
        scene.engine().SetSkin(Blue);
        scene.clear();
        scene.engine().SetSkin(QString::fromLatin1(name));
        QVERIFY(scene.isBuiltIn());
        QVERIFY(scene.record().contains(QStringLiteral("window.size=421x200")));
        QCOMPARE(scene.messages().all, QStringList());
    }
}

/// No caller applies the Advanced layout; it is only kept.
void TestSkinEngine::loadingEndsInTheClassicLayout()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.engine().ApplySkin(1);
    scene.clear();
    scene.engine().SetSkin(Blue);
    const auto number = SkinText::numberOf(QStringLiteral("Close"));
    QVERIFY(scene.main().record().contains(QStringLiteral("lblClose.Left=%1").arg(100 + number)));
    QVERIFY(scene.main().record().filter(QStringLiteral("=1%1").arg(100 + number)).isEmpty());
}

void TestSkinEngine::pathAndNameAreThoseOfTheSkin()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.engine().GetSkinName(), Blue);
    QCOMPARE(scene.engine().GetSkinPath(), scene.folder().path("skins/Blue"));
}

void TestSkinEngine::failureAfterASkinLeavesNothingOfEither()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.addSkin("Red", SkinText().removeElement(QStringLiteral("AboutAdobeCopyright")));
    scene.engine().SetSkin(Blue);
    scene.engine().SetSkin(QStringLiteral("Red"));
    QCOMPARE(scene.messages().all, one(Invalid, QStringLiteral("Red")));
    QVERIFY(scene.isBuiltIn());
}

void TestSkinEngine::builtInLayoutKeepsTheWindowsPictures()
{
    SkinScene scene;
    scene.engine().SetSkin(QString());
    QVERIFY(scene.record().filter(QStringLiteral("Picture")).isEmpty());
    QVERIFY(!scene.main().recordOf(QStringLiteral("PctInfo")).isEmpty());
}

void TestSkinEngine::textModeEndsWithTheSkin()
{
    SkinScene scene;
    scene.addSkin("Blue", SkinText().set(QStringLiteral("TextMode"), QStringLiteral("1"),
                                         QStringLiteral("FormMain")));
    scene.engine().SetSkin(Blue);
    QVERIFY(scene.engine().isTextMode());
    scene.engine().SetSkin(QString());
    QVERIFY(!scene.engine().isTextMode());
}

void TestSkinEngine::descriptionIsFoundInAnyCase()
{
    SkinScene scene;
    scene.folder().write("skins/Blue/INFO.SSK", SkinText().bytes());
    scene.folder().write("skins/Blue/P.PNG", pngOf(12, 9));
    scene.engine().SetSkin(QStringLiteral("blue"));
    QCOMPARE(scene.messages().all, QStringList());
    QCOMPARE(scene.engine().GetSkinName(), QStringLiteral("blue"));
}

void TestSkinEngine::onlyWindowsThatAreThereAreLaidOut()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.engine().setWindow(SkinForm::About, {});
    scene.engine().SetSkin(Blue);
    QVERIFY(!scene.main().record().isEmpty());
    QCOMPARE(scene.about().record(), QStringList());
    scene.engine().setWindow(SkinForm::Main, {});
    scene.clear();
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.record(), QStringList());
}

void TestSkinEngine::lateWindowIsLaidOutAlone()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.engine().setWindow(SkinForm::About, {});
    scene.engine().SetSkin(Blue);
    scene.clear();
    scene.engine().setWindow(SkinForm::About, WindowRef(scene.about()));
    scene.engine().ApplySkinTo(SkinForm::About, 0);
    QCOMPARE(scene.main().record(), QStringList());
    QCOMPARE(scene.about().order().size(), ExpectedElement::aboutOrder().size());
}

void TestSkinEngine::missingControlIsLeftOut()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.main().remove(QStringLiteral("imgIcon"));
    scene.main().remove(QStringLiteral("PctInfo"));
    scene.engine().SetSkin(Blue);
    QVERIFY(scene.main().recordOf(QStringLiteral("imgIcon")).isEmpty());
    QVERIFY(!scene.main().recordOf(QStringLiteral("LblInfo")).isEmpty());
}

void TestSkinEngine::refusedPictureIsAnError()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.main().refuse(QStringLiteral("PctInfo.Picture"));
    QVERIFY_EXCEPTION_THROWN(scene.engine().SetSkin(Blue), NumberedError);
    scene.engine().SetSkin(QString());
    QVERIFY(scene.isBuiltIn());
}

/// What was read of a broken skin must not get onto a window that is opened meanwhile.
void TestSkinEngine::nothingIsAppliedWhileAMessageIsShown()
{
    SkinScene scene;
    scene.addSkin("Blue", SkinText().removeElement(QStringLiteral("AboutTitle")));
    QStringList during;
    scene.messages().whileShown = [&scene, &during] {
        scene.engine().ApplySkin(0);
        scene.engine().ApplySkinTo(SkinForm::About, 1);
        during = scene.record();
    };
    scene.engine().SetSkin(Blue);
    QCOMPARE(scene.messages().all.size(), 1);
    QCOMPARE(during, QStringList());
    QVERIFY(scene.record().contains(QStringLiteral("window.size=421x311")));
}

void TestSkinEngine::skinChosenDuringAMessageComesNext()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.messages().whileShown = [&scene] { scene.engine().SetSkin(Blue); };
    scene.engine().SetSkin(QStringLiteral("Red"));
    QCOMPARE(scene.messages().all, one(NotFound, QStringLiteral("Red")));
    QCOMPARE(scene.engine().GetSkinName(), Blue);
}

void TestSkinEngine::minimiseZoneIsOptional()
{
    SkinScene scene;
    SkinText text;
    scene.addSkin("Blue", text);
    scene.engine().SetSkin(Blue);
    QVERIFY(!scene.engine().GetMinimiseZone());
    for (const auto &[key, value] : {std::pair("PosX", "31"), std::pair("PosY", "32"),
                                     std::pair("Width", "33"), std::pair("Height", "34")})
        text.set(QLatin1String("ClassicMin") + QLatin1String(key), QString::fromLatin1(value),
                 QStringLiteral("FormMain"));
    scene.addSkin("Blue", text);
    scene.engine().SetSkin(Blue);
    const auto zone = scene.engine().GetMinimiseZone();
    QVERIFY(zone);
    QCOMPARE(zone->left(0), 31);
    QCOMPARE(zone->bottom(0), 66);
    QVERIFY(zone->visible(0));
    scene.addSkin("Blue", text.set(QStringLiteral("ClassicMinWidth"), QStringLiteral("32767")));
    scene.engine().SetSkin(Blue);
    QVERIFY(!scene.engine().GetMinimiseZone());
    QCOMPARE(scene.messages().all, QStringList());
}

void TestSkinEngine::lookIsOptional()
{
    SkinScene scene;
    SkinText text;
    scene.addSkin("Blue", text);
    scene.engine().SetSkin(Blue);
    QVERIFY(scene.engine().GetLook() == SkinLook());
    scene.addSkin(
        "Red", text.set(QStringLiteral("FontSize"), QStringLiteral("20"), QStringLiteral("Look")));
    scene.engine().SetSkin(QStringLiteral("Red"));
    QCOMPARE(scene.engine().GetLook().fontSize(), 20);
    scene.engine().SetSkin(QString());
    QVERIFY(scene.engine().GetLook() == SkinLook());
}

void TestSkinEngine::longNameIsShortenedInTheMessage()
{
    SkinScene scene;
    scene.addSkin("Blue");
    scene.engine().SetSkin(QString(100000, QLatin1Char('x')));
    QCOMPARE(scene.messages().all.size(), 1);
    QVERIFY(scene.messages().all.first().size() < 400);
}

void TestSkinEngine::programHasOneSkin()
{
    SkinScene scene;
    scene.addSkin("Blue");
    SkinMessages messages;
    const SkinTexts texts;
    AppSkin::Initialise(scene.folder().path(), messages, texts);
    QCOMPARE(AppSkin::GetSkinName(), QStringLiteral("None"));
    QCOMPARE(AppSkin::GetSkinList(), QStringList{Blue});
    AppSkin::SetWindow(SkinForm::Main, WindowRef(scene.main()));
    AppSkin::SetSkin(Blue);
    QCOMPARE(AppSkin::GetSkinName(), Blue);
    QCOMPARE(AppSkin::GetSkinPath(), scene.folder().path("skins/Blue"));
    QVERIFY(!AppSkin::GetMinimiseZone());
    QVERIFY(AppSkin::GetLook() == SkinLook());
    AppSkin::ApplySkin(1);
    QVERIFY(scene.main().record().contains(QStringLiteral("window.size=1303x1403")));
    AppSkin::SetDefaultSkin();
    scene.clear();
    AppSkin::ApplySkinTo(SkinForm::Main, 0);
    QVERIFY(scene.main().record().contains(QStringLiteral("window.size=421x311")));
    AppSkin::SetSkin(QStringLiteral("Red"));
    QCOMPARE(messages.all, one(NotFound, QStringLiteral("Red")));
    AppSkin::Finish();
}

QTEST_GUILESS_MAIN(TestSkinEngine)
#include "tst_skinengine.moc"
