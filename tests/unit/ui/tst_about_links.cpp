#include "AboutScene.h"

#include "skin/controls/KelLabel.h"
#include "ui/LogoButton.h"

#include <QAccessible>
#include <QTest>

using namespace Quorlin;

/// The logos of the about box and what they open.
class TestAboutLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<AboutScene>(); }
    void cleanup() { m_scene.reset(); }
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

private:
    std::unique_ptr<AboutScene> m_scene;
};

namespace {

void click(LogoButton *logo)
{
    QTest::mouseClick(logo, Qt::LeftButton);
}

} // namespace

void TestAboutLinks::logosOpenTheirPagesInTheLanguageInUse_data()
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

void TestAboutLinks::logosOpenTheirPagesInTheLanguageInUse()
{
    QFETCH(QString, language);
    QFETCH(QString, adobe);
    QFETCH(QString, maker);
    const auto about = m_scene->opened(language);
    click(about->immAdobeLogo);
    click(about->immMakerLogo);
    QCOMPARE(m_scene->pages(), QStringList({adobe, maker}));
}

void TestAboutLinks::aLanguageOfTheUsersOwnOpensNothing()
{
    const auto about = m_scene->opened(QStringLiteral("italiano"));
    click(about->immAdobeLogo);
    click(about->immMakerLogo);
    QCOMPARE(m_scene->pages(), QStringList());
}

/// The partner's address is empty on purpose; nothing stands in for it.
void TestAboutLinks::thePlaceForAPartnerOpensNothing()
{
    const auto about = m_scene->opened();
    about->immPartner->setGeometry(0, 60, 20, 20);
    about->immPartner->show();
    about->lblPartner->setGeometry(20, 60, 20, 20);
    about->lblPartner->show();
    click(about->immPartner);
    QTest::mouseClick(about->lblPartner, Qt::LeftButton);
    QCOMPARE(m_scene->pages(), QStringList());
    QCOMPARE(about->immPartner->cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(about->lblPartner->cursor().shape(), Qt::ArrowCursor);
}

void TestAboutLinks::thePlaceForAPartnerIsNotShown()
{
    const auto about = m_scene->opened();
    QVERIFY(!about->immPartner->isVisible());
    QVERIFY(!about->lblPartner->isVisible());
}

void TestAboutLinks::aPointingHandShowsWhereTheTableHasADefault()
{
    // Also in a language without an entry of its own.
    const auto about = m_scene->opened(QStringLiteral("italiano"));
    QCOMPARE(about->immAdobeLogo->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(about->immMakerLogo->cursor().shape(), Qt::PointingHandCursor);
}

void TestAboutLinks::thePointerStaysWhereTheTableHasNoDefault_data()
{
    QTest::addColumn<QByteArray>("missing");
    QTest::addColumn<Qt::CursorShape>("adobe");
    QTest::addColumn<Qt::CursorShape>("maker");
    QTest::newRow("Adobe") << QByteArray("AdobeInternational") << Qt::ArrowCursor
                           << Qt::PointingHandCursor;
    QTest::newRow("maker") << QByteArray("MakerEnglish") << Qt::PointingHandCursor
                           << Qt::ArrowCursor;
}

void TestAboutLinks::thePointerStaysWhereTheTableHasNoDefault()
{
    QFETCH(QByteArray, missing);
    QFETCH(Qt::CursorShape, adobe);
    QFETCH(Qt::CursorShape, maker);
    m_scene->writeLinks(missing);
    const auto about = m_scene->opened(QStringLiteral("français"));
    QCOMPARE(about->immAdobeLogo->cursor().shape(), adobe);
    QCOMPARE(about->immMakerLogo->cursor().shape(), maker);
    // The language has its own pages all the same.
    click(about->immAdobeLogo);
    click(about->immMakerLogo);
    QCOMPARE(m_scene->pages(), QStringList({QStringLiteral("https://a.example/fr"),
                                            QStringLiteral("https://m.example/")}));
}

void TestAboutLinks::logosAreReachedWithTheTabulatorKey()
{
    const auto about = m_scene->opened();
    QCOMPARE(about->focusWidget(), about->lblAboutClose);
    QWidgetList reached;
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(about->focusWidget(), Qt::Key_Tab);
        reached.append(about->focusWidget());
    }
    QCOMPARE(reached,
             QWidgetList({about->immMakerLogo, about->immAdobeLogo, about->lblAboutClose}));
}

void TestAboutLinks::logosArePressedWithTheKeyboard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space bar") << Qt::Key_Space;
    QTest::newRow("return key") << Qt::Key_Return;
    QTest::newRow("enter key") << Qt::Key_Enter;
}

void TestAboutLinks::logosArePressedWithTheKeyboard()
{
    QFETCH(Qt::Key, key);
    const auto about = m_scene->opened();
    about->immAdobeLogo->setFocus();
    QTest::keyClick(about->focusWidget(), key);
    about->immMakerLogo->setFocus();
    QTest::keyClick(about->focusWidget(), key);
    QCOMPARE(m_scene->pages(), QStringList({QStringLiteral("https://a.example/int"),
                                            QStringLiteral("https://m.example/us")}));
}

void TestAboutLinks::logosAreButtonsWithNamesForAssistiveTools_data()
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

void TestAboutLinks::logosAreButtonsWithNamesForAssistiveTools()
{
    QFETCH(QString, language);
    QFETCH(QString, adobe);
    QFETCH(QString, maker);
    const auto about = m_scene->opened(language);
    auto *const first = QAccessible::queryAccessibleInterface(about->immAdobeLogo);
    auto *const second = QAccessible::queryAccessibleInterface(about->immMakerLogo);
    QCOMPARE(first->role(), QAccessible::Button);
    QCOMPARE(second->role(), QAccessible::Button);
    QCOMPARE(first->text(QAccessible::Name), adobe);
    QCOMPARE(second->text(QAccessible::Name), maker);
}

QTEST_MAIN(TestAboutLinks)
#include "tst_about_links.moc"
