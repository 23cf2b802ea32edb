#include "ui/frmAbout.h"

#include "i18n/AppText.h"
#include "i18n/AppTextSource.h"
#include "i18n/mdli18n.h"
#include "settings/Registry.h"
#include "settings/RegistryStore.h"
#include "settings/SystemRegistry.h"
#include "skin/AppSkin.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/LabelFace.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"
#include "ui/LogoButton.h"
#include "ui/mdlPartner.h"

#include <QAccessible>
#include <QFile>
#include <QScreen>
#include <QTest>

#include <memory>

using namespace Quorlin;

class TestFrmAbout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void logosOpenTheirPagesInTheLanguageInUse_data();
    void logosOpenTheirPagesInTheLanguageInUse();
    void aLanguageOfTheUsersOwnOpensNothing();
    void thePlaceForAPartnerOpensNothing();
    void thePlaceForAPartnerIsNotShown();
    void aPointingHandShowsWhereTheTableHasADefault();
    void thePointerStaysWhereTheTableHasNoDefault_data();
    void thePointerStaysWhereTheTableHasNoDefault();
    void logosAreReachedWithTheTabulatorKey();
    void logosArePressedWithTheKeyboard_data();
    void logosArePressedWithTheKeyboard();
    void logosAreButtonsWithNamesForAssistiveTools_data();
    void logosAreButtonsWithNamesForAssistiveTools();
    void showsTheTextsOfTheLanguage();
    void theVersionHasThreeNumbersOfTheRegistry_data();
    void theVersionHasThreeNumbersOfTheRegistry();
    void theCloseLabelCloses();
    void escapeCloses_data();
    void escapeCloses();
    void wearsTheSkinInUse();
    void givesTheSkinBackWhenItGoes();
    void standsOverTheMiddleOfItsOwner();
    void theMakersLogoCoversNoText_data();
    void theMakersLogoCoversNoText();
    void fontsAreAdaptedToTheLocale();

private:
    std::unique_ptr<frmAbout> opened(const QString &language = QStringLiteral("english"),
                                     QWidget *owner = nullptr);
    void writeLinks(const QByteArray &without = {}) const;

    std::unique_ptr<TestFolder> m_folder;
    KeptMessages m_messages;
    AppTextSource m_texts;
    std::unique_ptr<Registry> m_registry;
    QStringList m_pages;
};

namespace {

const QString DataFolder = QStringLiteral(QUORLIN_SOURCE_DIR "/data");

void click(LogoButton *logo)
{
    QTest::mouseClick(logo, Qt::LeftButton);
}

} // namespace

void TestFrmAbout::init()
{
    qputenv("LC_ALL", "C.UTF-8");
    m_folder = std::make_unique<TestFolder>();
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder->path("user")));
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(m_folder->path("machine")));
    m_registry = std::make_unique<Registry>(SystemRegistry::store());
    m_registry->SetAppParam(RegistryRoot::CurrentUser,
                            QStringLiteral("Software\\Varnex Software\\Quorlin\\2.0"));
    m_pages.clear();
    writeLinks();
    AppText::Initialise(DataFolder, m_messages);
    AppText::LoadLanguage(QStringLiteral("english"));
    AppSkin::Initialise(DataFolder, m_messages, m_texts);
    AppSkin::SetSkin(QStringLiteral("Varnex"));
    QVERIFY(m_messages.all().isEmpty());
}

void TestFrmAbout::cleanup()
{
    AppSkin::Finish();
}

/// The pages of all links, without those settings whose name begins in a certain way.
void TestFrmAbout::writeLinks(const QByteArray &without) const
{
    QByteArray settings("[WebLinks]\nAdobeInternational = https://a.example/int\n"
                        "AdobeFrench = https://a.example/fr\nAdobeGerman = https://a.example/de\n"
                        "MakerHome = https://m.example/\nMakerEnglish = https://m.example/us\n");
    if (!without.isEmpty())
        settings.replace("\n" + without, "\nNo" + without);
    m_folder->write("Quorlin.ini", settings);
    mdlPartner::InitWebLinks(m_folder->path());
}

std::unique_ptr<frmAbout> TestFrmAbout::opened(const QString &language, QWidget *owner)
{
    auto about = std::make_unique<frmAbout>(
        frmAbout::Surroundings{*m_registry, m_texts, language,
                               [this](const QString &address) { m_pages.append(address); }},
        owner);
    about->show();
    about->activateWindow();
    if (!QTest::qWaitForWindowActive(about.get()))
        qFatal("the about box does not become active");
    return about;
}

void TestFrmAbout::logosOpenTheirPagesInTheLanguageInUse_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("adobe");
    QTest::addColumn<QString>("maker");
    QTest::newRow("english") << QStringLiteral("english") << QStringLiteral("https://a.example/int")
                             << QStringLiteral("https://m.example/us");
    QTest::newRow("français") << QStringLiteral("français")
                              << QStringLiteral("https://a.example/fr")
                              << QStringLiteral("https://m.example/");
    QTest::newRow("deutsch") << QStringLiteral("deutsch") << QStringLiteral("https://a.example/de")
                             << QStringLiteral("https://m.example/us");
}

void TestFrmAbout::logosOpenTheirPagesInTheLanguageInUse()
{
    QFETCH(QString, language);
    QFETCH(QString, adobe);
    QFETCH(QString, maker);
    const auto about = opened(language);
    click(about->immAdobeLogo);
    click(about->immMakerLogo);
    QCOMPARE(m_pages, QStringList({adobe, maker}));
}

void TestFrmAbout::aLanguageOfTheUsersOwnOpensNothing()
{
    const auto about = opened(QStringLiteral("italiano"));
    click(about->immAdobeLogo);
    click(about->immMakerLogo);
    QCOMPARE(m_pages, QStringList());
}

/// The partner's address is empty on purpose; nothing stands in for it.
void TestFrmAbout::thePlaceForAPartnerOpensNothing()
{
    const auto about = opened();
    about->immPartner->setGeometry(0, 60, 20, 20);
    about->immPartner->show();
    about->lblPartner->setGeometry(20, 60, 20, 20);
    about->lblPartner->show();
    click(about->immPartner);
    QTest::mouseClick(about->lblPartner, Qt::LeftButton);
    QCOMPARE(m_pages, QStringList());
    QCOMPARE(about->immPartner->cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(about->lblPartner->cursor().shape(), Qt::ArrowCursor);
}

void TestFrmAbout::thePlaceForAPartnerIsNotShown()
{
    const auto about = opened();
    QVERIFY(!about->immPartner->isVisible());
    QVERIFY(!about->lblPartner->isVisible());
}

void TestFrmAbout::aPointingHandShowsWhereTheTableHasADefault()
{
    // Also in a language without an entry of its own.
    const auto about = opened(QStringLiteral("italiano"));
    QCOMPARE(about->immAdobeLogo->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(about->immMakerLogo->cursor().shape(), Qt::PointingHandCursor);
}

void TestFrmAbout::thePointerStaysWhereTheTableHasNoDefault_data()
{
    QTest::addColumn<QByteArray>("missing");
    QTest::addColumn<Qt::CursorShape>("adobe");
    QTest::addColumn<Qt::CursorShape>("maker");
    QTest::newRow("Adobe") << QByteArray("AdobeInternational") << Qt::ArrowCursor
                           << Qt::PointingHandCursor;
    QTest::newRow("maker") << QByteArray("MakerEnglish") << Qt::PointingHandCursor
                           << Qt::ArrowCursor;
}

void TestFrmAbout::thePointerStaysWhereTheTableHasNoDefault()
{
    QFETCH(QByteArray, missing);
    QFETCH(Qt::CursorShape, adobe);
    QFETCH(Qt::CursorShape, maker);
    writeLinks(missing);
    const auto about = opened(QStringLiteral("français"));
    QCOMPARE(about->immAdobeLogo->cursor().shape(), adobe);
    QCOMPARE(about->immMakerLogo->cursor().shape(), maker);
    // The language has its own pages all the same.
    click(about->immAdobeLogo);
    click(about->immMakerLogo);
    QCOMPARE(m_pages, QStringList({QStringLiteral("https://a.example/fr"),
                                   QStringLiteral("https://m.example/")}));
}

void TestFrmAbout::logosAreReachedWithTheTabulatorKey()
{
    const auto about = opened();
    QCOMPARE(about->focusWidget(), about->lblAboutClose);
    QWidgetList reached;
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(about->focusWidget(), Qt::Key_Tab);
        reached.append(about->focusWidget());
    }
    QCOMPARE(reached,
             QWidgetList({about->immMakerLogo, about->immAdobeLogo, about->lblAboutClose}));
}

void TestFrmAbout::logosArePressedWithTheKeyboard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space bar") << Qt::Key_Space;
    QTest::newRow("return key") << Qt::Key_Return;
    QTest::newRow("enter key") << Qt::Key_Enter;
}

void TestFrmAbout::logosArePressedWithTheKeyboard()
{
    QFETCH(Qt::Key, key);
    const auto about = opened();
    about->immAdobeLogo->setFocus();
    QTest::keyClick(about->focusWidget(), key);
    about->immMakerLogo->setFocus();
    QTest::keyClick(about->focusWidget(), key);
    QCOMPARE(m_pages, QStringList({QStringLiteral("https://a.example/int"),
                                   QStringLiteral("https://m.example/us")}));
}

void TestFrmAbout::logosAreButtonsWithNamesForAssistiveTools_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("adobe");
    QTest::addColumn<QString>("maker");
    QTest::newRow("english") << QStringLiteral("english") << QStringLiteral("Web site of Adobe")
                             << QStringLiteral("Web site of Varnex Software");
    QTest::newRow("français") << QStringLiteral("français") << QStringLiteral("Site web d’Adobe")
                              << QStringLiteral("Site web de Varnex Software");
    QTest::newRow("deutsch") << QStringLiteral("deutsch") << QStringLiteral("Website von Adobe")
                             << QStringLiteral("Website von Varnex Software");
}

void TestFrmAbout::logosAreButtonsWithNamesForAssistiveTools()
{
    QFETCH(QString, language);
    QFETCH(QString, adobe);
    QFETCH(QString, maker);
    const auto about = opened(language);
    auto *const first = QAccessible::queryAccessibleInterface(about->immAdobeLogo);
    auto *const second = QAccessible::queryAccessibleInterface(about->immMakerLogo);
    QCOMPARE(first->role(), QAccessible::Button);
    QCOMPARE(second->role(), QAccessible::Button);
    QCOMPARE(first->text(QAccessible::Name), adobe);
    QCOMPARE(second->text(QAccessible::Name), maker);
}

void TestFrmAbout::showsTheTextsOfTheLanguage()
{
    AppText::LoadLanguage(QStringLiteral("deutsch"));
    const auto about = opened(AppText::GetLanguage());
    const auto text = [](TextKey key) { return AppText::GetText(key); };
    QCOMPARE(about->windowTitle(), text(TextKey::AboutTitle));
    QCOMPARE(about->lblAboutTitle->Caption(), text(TextKey::AboutTitle));
    QVERIFY(about->lblCopyright->Caption().startsWith(text(TextKey::AboutCopyright)));
    QCOMPARE(about->lblAdobeTitle->Caption(), text(TextKey::AboutAdobeTitle));
    QCOMPARE(about->lblAdobeInfo->Caption(), text(TextKey::AboutAdobeInformations));
    QCOMPARE(about->lblAdobeInfo->Caption().count(QLatin1Char('\n')), 1);
    QCOMPARE(about->lblAdobeCopyright->Caption(), text(TextKey::AboutAdobeTrademarks));
    QVERIFY(about->lblProductName->Caption().startsWith(text(TextKey::AppWindowTitle)));
}

void TestFrmAbout::theVersionHasThreeNumbersOfTheRegistry_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    const auto own = QStringLiteral(QUORLIN_VERSION);
    QTest::newRow("three") << QStringLiteral("2.14.395") << QStringLiteral("2.14.395");
    QTest::newRow("four") << QStringLiteral("2.0.1.77") << QStringLiteral("2.0.1");
    QTest::newRow("none") << QString() << own;
    QTest::newRow("two") << QStringLiteral("2.1") << own;
    QTest::newRow("no numbers") << QStringLiteral("a.b.c") << own;
    QTest::newRow("empty numbers") << QStringLiteral("2..1") << own;
    QTest::newRow("long") << QString(1000, u'1') + QStringLiteral(".2.3") << own;
}

void TestFrmAbout::theVersionHasThreeNumbersOfTheRegistry()
{
    QFETCH(QString, value);
    QFETCH(QString, shown);
    if (!value.isEmpty())
        m_registry->SetAppData(QStringLiteral("Version"), value);
    const auto about = opened();
    QVERIFY(about->lblProductName->Caption().endsWith(QLatin1String("Version ") + shown));
}

void TestFrmAbout::theCloseLabelCloses()
{
    const auto about = opened();
    QTest::mouseClick(about->lblAboutClose, Qt::LeftButton);
    QVERIFY(!about->isVisible());
}

void TestFrmAbout::escapeCloses_data()
{
    QTest::addColumn<QString>("focus");
    QTest::newRow("label") << QStringLiteral("lblAboutClose");
    QTest::newRow("logo") << QStringLiteral("immAdobeLogo");
}

void TestFrmAbout::escapeCloses()
{
    QFETCH(QString, focus);
    const auto about = opened();
    auto *const control = about->findChild<QWidget *>(focus);
    control->setFocus();
    QTest::keyClick(control, Qt::Key_Escape);
    QVERIFY(!about->isVisible());
}

void TestFrmAbout::wearsTheSkinInUse()
{
    const auto varnex = opened();
    QCOMPARE(varnex->size(), QSize(500, 280));
    QVERIFY(!varnex->Picture().isEmpty());
    AppSkin::SetSkin(QStringLiteral("None"));
    const auto builtIn = opened();
    QCOMPARE(builtIn->size(), QSize(421, 200));
    QVERIFY(!builtIn->Picture().isEmpty());
}

void TestFrmAbout::givesTheSkinBackWhenItGoes()
{
    opened().reset();
    // Without a window this lays out nothing; with one that is gone it would fail.
    AppSkin::SetSkin(QStringLiteral("Nightfall"));
    QCOMPARE(AppSkin::GetSkinName(), QStringLiteral("Nightfall"));
}

void TestFrmAbout::standsOverTheMiddleOfItsOwner()
{
    QWidget owner;
    owner.setGeometry(100, 100, 600, 400);
    owner.show();
    {
        const auto about = opened(QStringLiteral("english"), &owner);
        QCOMPARE(about->geometry().center(), owner.geometry().center());
        QVERIFY(about->isWindow());
    }
    // At the edge of the screen it stays on the screen.
    owner.move(-500, -300);
    const auto about = opened(QStringLiteral("english"), &owner);
    QCOMPARE(about->pos(), about->screen()->availableGeometry().topLeft());
}

void TestFrmAbout::theMakersLogoCoversNoText_data()
{
    QTest::addColumn<QString>("skin");
    for (const auto *const skin : {"Varnex", "Nightfall", "Clarity", "None"})
        QTest::addRow("%s", skin) << QString::fromLatin1(skin);
}

void TestFrmAbout::theMakersLogoCoversNoText()
{
    QFETCH(QString, skin);
    AppSkin::SetSkin(skin);
    for (const auto &language :
         {QStringLiteral("english"), QStringLiteral("français"), QStringLiteral("deutsch")}) {
        AppText::LoadLanguage(language);
        const auto about = opened(language);
        const auto place = about->immMakerLogo->geometry();
        QVERIFY(about->immMakerLogo->isVisible());
        QVERIFY(place.width() >= 28 && place.width() == place.height());
        QVERIFY(about->rect().contains(place));
        const auto *const logo = about->immMakerLogo;
        for (auto *const control : about->findChildren<QWidget *>()) {
            if (control == logo || !control->isVisible())
                continue;
            auto used = control->geometry();
            if (const auto *const label = qobject_cast<KelLabel *>(control)) {
                const auto face = label->face();
                const auto size = face.textBlock().size();
                used = QRect(label->pos() + face.textPosition(size), size);
            }
            QVERIFY2(!used.intersects(place), qPrintable(control->objectName()));
        }
    }
}

void TestFrmAbout::fontsAreAdaptedToTheLocale()
{
    qputenv("LC_ALL", "ja_JP.UTF-8");
    const auto about = opened();
    const auto face = QStringLiteral("\uFF2D\uFF33 \uFF30\u30B4\u30B7\u30C3\u30AF");
    for (const QWidget *const control : {static_cast<const QWidget *>(about.get()),
                                         static_cast<const QWidget *>(about->lblAdobeInfo),
                                         static_cast<const QWidget *>(about->lblProductName)}) {
        QCOMPARE(control->font().family(), face);
        QVERIFY(control->font().pixelSize() >= 12);
        QCOMPARE(control->property(mdli18n::CharsetProperty), QVariant(128));
    }
    qputenv("LC_ALL", "de_DE.UTF-8");
    const auto german = opened();
    QCOMPARE(german->property(mdli18n::CharsetProperty), QVariant(0));
    QVERIFY(german->font().family() != face);
}

QTEST_MAIN(TestFrmAbout)
#include "tst_frmabout.moc"
