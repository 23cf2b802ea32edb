#include "MainScene.h"
#include "i18n/AppText.h"
#include "i18n/mdli18n.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"
#include "ui/AppMenu.h"
#include "ui/FileList.h"
#include "ui/PictureBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGuiApplication>
#include <QMenu>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using namespace Quorlin;

/// The main window from its load to its end: what it reads, and what it leaves.
class TestFrmMainLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<MainScene>(); }
    void cleanup() { m_scene.reset(); }
    void loadsInItsOrder();
    void theInformationPanelIsHiddenAtFirst();
    void readsTheOptions();
    void readsTheLanguage();
    void aLanguageThatIsNotThereIsToldAndTheBuiltInOneIsUsed();
    void theQualityMinusOneLeavesNoneSelected();
    void aQualityThatIsNoPositionSelectsTheFirst_data();
    void aQualityThatIsNoPositionSelectsTheFirst();
    void readsTheSkin();
    void aSkinThatIsMissingFallsBackToTheMachinesThenToVarnex();
    void offersEveryLanguageAndSkin();
    void anInstallationWithoutLanguagesDisablesTheirMenu();
    void aMissingComponentIsToldAndEndsTheProgram();
    void aMissingSettingsFileEndsTheProgram();
    void whatCouldNotBeLoadedIsNotForgotten();
    void anUnknownFailureIsToldAndEndsTheProgram();
    void theEndWritesTheSettings();
    void theEndHappensOnce();
    void theEndClosesTheAboutBox();
    void fontsAreAdaptedToTheSystem();
    void documentsOfOtherStartsWaitForTheWindow();
    void aStartWithDocumentsClearsWhatWasLeftForIt();
    void aStartWithoutDocumentsLeavesFileAndRunAlone();
    void settingsAreThereAfterARestart();
    void standsWhereItStood();
    void aPlaceOutsideOfAllScreensIsNotTaken();

private:
    frmMain &open() { return m_scene->open(); }
    [[nodiscard]] QMenu *menu(const char *name) const
    {
        return m_scene->window().findChild<QMenu *>(QLatin1String(name));
    }
    /// A program's folder with settings, and nothing else.
    [[nodiscard]] QString bareProgram() const;

    std::unique_ptr<MainScene> m_scene;
};

namespace {

QStringList textsOf(const QMenu &menu)
{
    QStringList texts;
    for (const auto *const entry : menu.actions())
        texts.append(entry->text());
    texts.sort();
    return texts;
}

} // namespace

QString TestFrmMainLoad::bareProgram() const
{
    const auto &folder = m_scene->folder();
    folder.write("program/Quorlin.ini", "[JobOptions]\nLow = l.joboptions\n");
    folder.write("program/Settings/l.joboptions", "<< >> setdistillerparams");
    return folder.path("program");
}

void TestFrmMainLoad::loadsInItsOrder()
{
    QVERIFY(m_scene->make().load());
    QCOMPARE(m_scene->services.calls,
             QStringList({QStringLiteral("pHook"), QStringLiteral("CreateTaskbarProxy Quorlin")}));
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestFrmMainLoad::theInformationPanelIsHiddenAtFirst()
{
    auto &window = open();
    QVERIFY(!window.PctInfo->isVisible());
    QVERIFY(!window.BarProgress->isVisible());
    QVERIFY(!window.AtWork());
    QVERIFY(window.LstFile->isVisible());
}

void TestFrmMainLoad::readsTheOptions()
{
    m_scene->remember("ShowOption", QStringLiteral("True"));
    m_scene->remember("MergeOption", QStringLiteral("no"));
    auto &window = open();
    QVERIFY(window.OptShow->isChecked());
    QVERIFY(!window.OptLink->isChecked());
    QVERIFY(!window.OptMail->isChecked());
}

void TestFrmMainLoad::readsTheLanguage()
{
    m_scene->setForMachine("Language", QStringLiteral("deutsch"));
    auto &window = open();
    QCOMPARE(window.Language(), QStringLiteral("deutsch"));
    QCOMPARE(window.LblLink->shownText(), AppText::GetText(TextKey::TextOptLink));
    QVERIFY(window.LblLink->shownText() != QLatin1String("Merge files"));
}

void TestFrmMainLoad::aLanguageThatIsNotThereIsToldAndTheBuiltInOneIsUsed()
{
    m_scene->remember("Language", QStringLiteral("klingon"));
    auto &window = open();
    QCOMPARE(m_scene->messages.all().size(), 1);
    QCOMPARE(m_scene->messages.all().first().text,
             QStringLiteral("Can't load klingon language : file not found or in use"));
    QCOMPARE(window.LblLink->shownText(), QStringLiteral("Merge files"));
}

void TestFrmMainLoad::theQualityMinusOneLeavesNoneSelected()
{
    m_scene->remember("Quality", QStringLiteral("-1"));
    QCOMPARE(open().cmbCompression->currentIndex(), -1);
}

void TestFrmMainLoad::aQualityThatIsNoPositionSelectsTheFirst_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("too high") << QStringLiteral("7");
    QTest::newRow("no number") << QStringLiteral("abc");
}

void TestFrmMainLoad::aQualityThatIsNoPositionSelectsTheFirst()
{
    QFETCH(QString, text);
    m_scene->remember("Quality", text);
    auto &window = open();
    QCOMPARE(window.cmbCompression->count(), 4);
    QCOMPARE(window.cmbCompression->currentIndex(), 0);
}

void TestFrmMainLoad::readsTheSkin()
{
    m_scene->remember("Skin", QStringLiteral("Clarity"));
    const auto size = open().size();
    m_scene->remember("Skin", QStringLiteral("Varnex"));
    QVERIFY(open().size() != size);
}

void TestFrmMainLoad::aSkinThatIsMissingFallsBackToTheMachinesThenToVarnex()
{
    m_scene->remember("Skin", QStringLiteral("Gone"));
    m_scene->setForMachine("Skin", QStringLiteral("Nightfall"));
    open();
    m_scene->close();
    QCOMPARE(m_scene->remembered("Skin"), QStringLiteral("Nightfall"));
    m_scene->remember("Skin", QStringLiteral("Gone"));
    m_scene->setForMachine("Skin", QString());
    open();
    m_scene->close();
    QCOMPARE(m_scene->remembered("Skin"), QStringLiteral("Varnex"));
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestFrmMainLoad::offersEveryLanguageAndSkin()
{
    open();
    QCOMPARE(textsOf(*menu("menu_app_language")),
             QStringList({QStringLiteral("deutsch"), QStringLiteral("english"),
                          QStringLiteral("français")}));
    QCOMPARE(textsOf(*menu("menu_app_skin")),
             QStringList({QStringLiteral("Clarity"), QStringLiteral("Nightfall"),
                          QStringLiteral("Varnex")}));
    for (const auto *const entry : menu("menu_app_language")->actions()) {
        QCOMPARE(entry->objectName(), QStringLiteral("ss_app_language_item"));
        QCOMPARE(entry->isChecked(), entry->text() == QLatin1String("english"));
        QVERIFY(entry->isVisible() && entry->isEnabled());
    }
    QVERIFY(menu("menu_app_language")->menuAction()->isEnabled());
}

void TestFrmMainLoad::anInstallationWithoutLanguagesDisablesTheirMenu()
{
    m_scene->setProgramFolder(bareProgram());
    auto &window = open();
    QVERIFY(!menu("menu_app_language")->menuAction()->isEnabled());
    QVERIFY(!menu("menu_app_skin")->menuAction()->isEnabled());
    QCOMPARE(window.LblShow->shownText(), QStringLiteral("Show result file"));
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestFrmMainLoad::aMissingComponentIsToldAndEndsTheProgram()
{
    m_scene->setComponent(m_scene->folder().path("no-component"));
    auto &window = m_scene->make();
    const QSignalSpy unloaded(&window, &frmMain::unloaded);
    QVERIFY(!window.load());
    QCOMPARE(m_scene->messages.all().size(), 1);
    const auto message = m_scene->messages.all().first();
    QCOMPARE(message.text,
             QStringLiteral("Can't found the PDF library : the program will shut down"));
    QCOMPARE(message.style, MessageStyle::Critical);
    QCOMPARE(message.title, QStringLiteral("Error"));
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(m_scene->services.calls.contains(QStringLiteral("pUnhook")));
}

void TestFrmMainLoad::aMissingSettingsFileEndsTheProgram()
{
    m_scene->setProgramFolder(m_scene->folder().makeFolder("empty"));
    auto &window = m_scene->make();
    const QSignalSpy unloaded(&window, &frmMain::unloaded);
    QVERIFY(!window.load());
    QCOMPARE(unloaded.size(), 1);
    QCOMPARE(m_scene->messages.all().size(), 1);
    const auto message = m_scene->messages.all().first();
    QCOMPARE(message.text, QStringLiteral("Quorlin V2 is corrupted, reinstall the product."));
    QCOMPARE(message.style, MessageStyle::Critical);
}

void TestFrmMainLoad::whatCouldNotBeLoadedIsNotForgotten()
{
    m_scene->remember("Quality", QStringLiteral("2"));
    m_scene->remember("Language", QStringLiteral("français"));
    m_scene->remember("Skin", QStringLiteral("Clarity"));
    m_scene->remember("ShowOption", QStringLiteral("true"));
    m_scene->setComponent(m_scene->folder().path("no-component"));
    QVERIFY(!m_scene->make().load());
    QCOMPARE(m_scene->remembered("Quality"), QStringLiteral("2"));
    QCOMPARE(m_scene->remembered("Language"), QStringLiteral("français"));
    QCOMPARE(m_scene->remembered("Skin"), QStringLiteral("Clarity"));
    QCOMPARE(m_scene->remembered("ShowOption"), QStringLiteral("true"));
}

void TestFrmMainLoad::anUnknownFailureIsToldAndEndsTheProgram()
{
    class FailingServices : public KeptServices
    {
    public:
        void CreateTaskbarProxy(QWidget &, const QString &) override
        {
            throw std::runtime_error("no taskbar");
        }
    } services;
    auto &registry = m_scene->registry();
    m_scene->make();
    const AppTextSource texts;
    ComponentSettings component;
    component.program = QStringLiteral(QUORLIN_FAKE_COMPONENT);
    frmMain window({registry,
                    m_scene->messages,
                    texts,
                    m_scene->dialogs,
                    services,
                    QStringLiteral(QUORLIN_SOURCE_DIR "/data"),
                    component,
                    {},
                    {}});
    const QSignalSpy unloaded(&window, &frmMain::unloaded);
    QVERIFY(!window.load());
    QCOMPARE(unloaded.size(), 1);
    QCOMPARE(m_scene->messages.all().size(), 1);
    QCOMPARE(m_scene->messages.all().first().text,
             QStringLiteral("Erreur inconnu lors du chargement de l'application"));
    QCOMPARE(m_scene->messages.all().first().style, MessageStyle::Plain);
}

void TestFrmMainLoad::theEndWritesTheSettings()
{
    auto &window = open();
    const QSignalSpy unloaded(&window, &frmMain::unloaded);
    window.OptShow->setChecked(true);
    window.cmbCompression->setCurrentIndex(3);
    window.Language(QStringLiteral("français"));
    m_scene->close();
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(!window.isVisible());
    QCOMPARE(m_scene->remembered("ShowOption"), QStringLiteral("true"));
    QCOMPARE(m_scene->remembered("MergeOption"), QStringLiteral("false"));
    QCOMPARE(m_scene->remembered("Quality"), QStringLiteral("3"));
    QCOMPARE(m_scene->remembered("Language"), QStringLiteral("français"));
    QCOMPARE(m_scene->remembered("Skin"), QStringLiteral("Varnex"));
    QCOMPARE(m_scene->services.calls.mid(2),
             QStringList({QStringLiteral("pUnhook"), QStringLiteral("DestroyTaskbarProxy")}));
}

void TestFrmMainLoad::theEndHappensOnce()
{
    auto &window = open();
    const QSignalSpy unloaded(&window, &frmMain::unloaded);
    m_scene->close();
    window.endBySystem();
    m_scene->close();
    QCOMPARE(unloaded.size(), 1);
    QCOMPARE(m_scene->services.calls.count(QStringLiteral("pUnhook")), 1);
}

void TestFrmMainLoad::theEndClosesTheAboutBox()
{
    auto &window = open();
    Q_EMIT window.findChild<AppMenu *>()->aboutChosen();
    const QPointer<QWidget> about(window.findChild<QWidget *>(QStringLiteral("frmAbout")));
    QVERIFY(!about.isNull());
    window.endBySystem();
    QTRY_VERIFY(about.isNull());
}

void TestFrmMainLoad::fontsAreAdaptedToTheSystem()
{
    const auto *const property = mdli18n::CharsetProperty;
    QVERIFY(!open().property(property).isValid());
    qputenv("LC_ALL", "ru_RU.UTF-8");
    auto &russian = open();
    qputenv("LC_ALL", "C.UTF-8");
    QCOMPARE(russian.property(property).toInt(), 204);
    QCOMPARE(russian.LstFile->property(property).toInt(), 204);
    QCOMPARE(russian.LblShow->property(property).toInt(), 204);
}

/// The hand-off works before there is a window to see, and the list is emptied when it is shown.
void TestFrmMainLoad::documentsOfOtherStartsWaitForTheWindow()
{
    auto &window = m_scene->make();
    window.ReceiveMessage(m_scene->write("a.txt"));
    QVERIFY(window.load());
    window.ReceiveMessage(m_scene->write("b.txt"));
    QTest::qWait(20);
    QVERIFY(window.DocFullNameList().isEmpty());
    window.show();
    window.LstFile->clear();
    QVERIFY(m_scene->hasDocuments(2));
    QCOMPARE(window.LstFile->count(), 2);
}

void TestFrmMainLoad::aStartWithDocumentsClearsWhatWasLeftForIt()
{
    m_scene->remember("File", QStringLiteral("/left"));
    m_scene->remember("Run", QStringLiteral("1"));
    open().StartMode(1);
    m_scene->close();
    QCOMPARE(m_scene->remembered("File"), QString());
    QCOMPARE(m_scene->remembered("Run"), QStringLiteral("0"));
}

void TestFrmMainLoad::aStartWithoutDocumentsLeavesFileAndRunAlone()
{
    m_scene->remember("File", QStringLiteral("/left"));
    m_scene->remember("Run", QStringLiteral("1"));
    auto &window = open();
    QCOMPARE(window.StartMode(), 0);
    QVERIFY(window.DocFullNameList().isEmpty());
    m_scene->close();
    QCOMPARE(m_scene->remembered("File"), QStringLiteral("/left"));
    QCOMPARE(m_scene->remembered("Run"), QStringLiteral("1"));
}

void TestFrmMainLoad::settingsAreThereAfterARestart()
{
    auto *window = &open();
    window->OptLink->setChecked(true);
    window->cmbCompression->setCurrentIndex(1);
    window->Language(QStringLiteral("deutsch"));
    m_scene->close();
    window = &open();
    QVERIFY(window->OptLink->isChecked());
    QCOMPARE(window->cmbCompression->currentIndex(), 1);
    QCOMPARE(window->Language(), QStringLiteral("deutsch"));
}

void TestFrmMainLoad::standsWhereItStood()
{
    open().move(37, 41);
    m_scene->close();
    QCOMPARE(open().pos(), QPoint(37, 41));
}

void TestFrmMainLoad::aPlaceOutsideOfAllScreensIsNotTaken()
{
    m_scene->remember("Position", QStringLiteral("-5000,90000"));
    auto &window = open();
    QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(window.pos()));
}

QTEST_MAIN(TestFrmMainLoad)
#include "tst_frmmain_load.moc"
