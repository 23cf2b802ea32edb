#include "AboutScene.h"

#include "i18n/AppText.h"
#include "i18n/mdli18n.h"
#include "skin/AppSkin.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/LabelFace.h"
#include "ui/LogoButton.h"

#include <QScreen>
#include <QTest>

using namespace Quorlin;

/// What the about box shows, and how it comes and goes.
class TestFrmAbout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<AboutScene>(); }
    void cleanup() { m_scene.reset(); }
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
    void noTextIsCutWhereTheLocaleRaisesTheFonts_data() { theMakersLogoCoversNoText_data(); }
    void noTextIsCutWhereTheLocaleRaisesTheFonts();

private:
    std::unique_ptr<AboutScene> m_scene;
};

void TestFrmAbout::showsTheTextsOfTheLanguage()
{
    AppText::LoadLanguage(QStringLiteral("deutsch"));
    const auto about = m_scene->opened(AppText::GetLanguage());
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
        m_scene->registry().SetAppData(QStringLiteral("Version"), value);
    const auto about = m_scene->opened();
    QVERIFY(about->lblProductName->Caption().endsWith(QLatin1String("Version ") + shown));
}

void TestFrmAbout::theCloseLabelCloses()
{
    const auto about = m_scene->opened();
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
    const auto about = m_scene->opened();
    auto *const control = about->findChild<QWidget *>(focus);
    control->setFocus();
    QTest::keyClick(control, Qt::Key_Escape);
    QVERIFY(!about->isVisible());
}

void TestFrmAbout::wearsTheSkinInUse()
{
    const auto varnex = m_scene->opened();
    QCOMPARE(varnex->size(), QSize(500, 280));
    QVERIFY(!varnex->Picture().isEmpty());
    AppSkin::SetSkin(QStringLiteral("None"));
    const auto builtIn = m_scene->opened();
    QCOMPARE(builtIn->size(), QSize(421, 200));
    QVERIFY(!builtIn->Picture().isEmpty());
}

void TestFrmAbout::givesTheSkinBackWhenItGoes()
{
    m_scene->opened().reset();
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
        const auto about = m_scene->opened(QStringLiteral("english"), &owner);
        QCOMPARE(about->geometry().center(), owner.geometry().center());
        QVERIFY(about->isWindow());
    }
    // At the edge of the screen it stays on the screen.
    owner.move(-500, -300);
    const auto about = m_scene->opened(QStringLiteral("english"), &owner);
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
        const auto about = m_scene->opened(language);
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
    const auto about = m_scene->opened();
    const auto face = QStringLiteral("\uFF2D\uFF33 \uFF30\u30B4\u30B7\u30C3\u30AF");
    for (const QWidget *const control : {static_cast<const QWidget *>(about.get()),
                                         static_cast<const QWidget *>(about->lblAdobeInfo),
                                         static_cast<const QWidget *>(about->lblProductName)}) {
        QCOMPARE(control->font().family(), face);
        QVERIFY(control->font().pixelSize() >= 12);
        QCOMPARE(control->property(mdli18n::CharsetProperty), QVariant(128));
    }
    qputenv("LC_ALL", "de_DE.UTF-8");
    const auto german = m_scene->opened();
    QCOMPARE(german->property(mdli18n::CharsetProperty), QVariant(0));
    QVERIFY(german->font().family() != face);
}

void TestFrmAbout::noTextIsCutWhereTheLocaleRaisesTheFonts()
{
    QFETCH(QString, skin);
    qputenv("LC_ALL", "ja_JP.UTF-8");
    AppSkin::SetSkin(skin);
    const auto about = m_scene->opened();
    auto texts = 0;
    for (const auto *const label : about->findChildren<KelLabel *>()) {
        if (!label->isVisible() || label->Caption().isEmpty())
            continue;
        const auto face = label->face();
        const auto block = face.textBlock();
        const auto room = face.inside().size();
        QVERIFY2(!block.isElided() && block.size().boundedTo(room) == block.size(),
                 qPrintable(label->objectName()));
        ++texts;
    }
    QCOMPARE(texts, 6);
}

QTEST_MAIN(TestFrmAbout)
#include "tst_frmabout.moc"
