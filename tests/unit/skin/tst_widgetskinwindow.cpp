#include "skin/SkinPicture.h"
#include "skin/controls/WidgetSkinWindow.h"

#include <QLabel>
#include <QTest>

using namespace Quorlin;

namespace {

class PictureBox : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(Quorlin::SkinPicture Picture READ picture WRITE setPicture)

public:
    using QWidget::QWidget;
    [[nodiscard]] SkinPicture picture() const { return m_picture; }
    void setPicture(const SkinPicture &picture) { m_picture = picture; }

private:
    SkinPicture m_picture;
};

SkinPicture somePicture()
{
    return SkinPicture::ofPoints(QImage(12, 9, QImage::Format_RGB32));
}

bool set(WidgetSkinWindow &window, const char *control, const char *property, const QVariant &value)
{
    auto *const target = window.find(QLatin1StringView(control));
    return target && target->set(QLatin1StringView(property), value);
}

} // namespace

class TestWidgetSkinWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void laysControlsOutByTheirNames();
    void findsControlsWithinPanels();
    void hidesAControlBeforeTheWindowIsShown();
    void refusesWhatAControlDoesNotHave();
    void refusesNegativeSizes();
    void givesPicturesToThoseThatTakeThem();
    void fixesTheWindowsSize();
    void absurdWindowSizesDoNoHarm();
    void windowThatIsGoneTakesNothing();

private:
    std::unique_ptr<PictureBox> m_window;
    QLabel *m_label = nullptr;
};

void TestWidgetSkinWindow::init()
{
    m_window = std::make_unique<PictureBox>();
    auto *const panel = new PictureBox(m_window.get());
    panel->setObjectName(QStringLiteral("PctInfo"));
    m_label = new QLabel(panel);
    m_label->setObjectName(QStringLiteral("LblInfo"));
}

void TestWidgetSkinWindow::cleanup()
{
    m_window.reset();
}

void TestWidgetSkinWindow::laysControlsOutByTheirNames()
{
    WidgetSkinWindow window(*m_window);
    QVERIFY(set(window, "LblInfo", "width", 30));
    QVERIFY(set(window, "LblInfo", "height", 40));
    QVERIFY(set(window, "LblInfo", "Left", -5));
    QVERIFY(set(window, "LblInfo", "Top", 6));
    QCOMPARE(m_label->geometry(), QRect(-5, 6, 30, 40));
}

void TestWidgetSkinWindow::findsControlsWithinPanels()
{
    WidgetSkinWindow window(*m_window);
    QVERIFY(window.find(QLatin1StringView("LblInfo")));
    QVERIFY(!window.find(QLatin1StringView("lblinfo")));
}

void TestWidgetSkinWindow::hidesAControlBeforeTheWindowIsShown()
{
    WidgetSkinWindow window(*m_window);
    QVERIFY(set(window, "LblInfo", "visible", false));
    m_window->show();
    QVERIFY(!m_label->isVisible());
    QVERIFY(set(window, "LblInfo", "visible", true));
    QVERIFY(m_label->isVisible());
}

void TestWidgetSkinWindow::refusesWhatAControlDoesNotHave()
{
    WidgetSkinWindow window(*m_window);
    QVERIFY(!set(window, "LblInfo", "Picture", QVariant::fromValue(somePicture())));
    QVERIFY(!set(window, "LblInfo", "nothing", 1));
    QVERIFY(m_label->dynamicPropertyNames().isEmpty());
}

void TestWidgetSkinWindow::refusesNegativeSizes()
{
    WidgetSkinWindow window(*m_window);
    m_label->resize(30, 40);
    QVERIFY(!set(window, "LblInfo", "width", -1));
    QVERIFY(!set(window, "LblInfo", "height", -32768));
    QVERIFY(set(window, "LblInfo", "height", 0));
    QCOMPARE(m_label->size(), QSize(30, 0));
}

void TestWidgetSkinWindow::givesPicturesToThoseThatTakeThem()
{
    WidgetSkinWindow window(*m_window);
    const auto picture = somePicture();
    QVERIFY(window.setPicture(picture));
    QVERIFY(m_window->picture() == picture);
    QVERIFY(set(window, "PctInfo", "Picture", QVariant::fromValue(picture)));
    QVERIFY(m_window->findChild<PictureBox *>()->picture() == picture);
    QVERIFY(window.setPicture({}));
    QVERIFY(m_window->picture().isEmpty());
    QWidget plain;
    QVERIFY(!WidgetSkinWindow(plain).setPicture(picture));
}

void TestWidgetSkinWindow::fixesTheWindowsSize()
{
    WidgetSkinWindow window(*m_window);
    QVERIFY(window.setSize({421, 311}));
    m_window->resize(500, 500);
    QCOMPARE(m_window->size(), QSize(421, 311));
    QVERIFY(window.setSize({300, 200}));
    QCOMPARE(m_window->size(), QSize(300, 200));
}

void TestWidgetSkinWindow::absurdWindowSizesDoNoHarm()
{
    WidgetSkinWindow window(*m_window);
    QVERIFY(window.setSize({-32768, 0}));
    QCOMPARE(m_window->size(), QSize(1, 1));
    QVERIFY(window.setSize({32767, 1}));
    QCOMPARE(m_window->size(), QSize(4096, 1));
    QVERIFY(window.setPicture(somePicture()));
    QVERIFY(window.setSize({32767, 32767}));
    QCOMPARE(m_window->size(), QSize(4096, 4096));
    QVERIFY(window.setSize({4096, 4095}));
    QCOMPARE(m_window->size(), QSize(4096, 4095));
}

void TestWidgetSkinWindow::windowThatIsGoneTakesNothing()
{
    WidgetSkinWindow window(*m_window);
    auto *const target = window.find(QLatin1StringView("LblInfo"));
    QVERIFY(target);
    m_window.reset();
    QVERIFY(!target->set(QLatin1StringView("Left"), 1));
    QVERIFY(!window.find(QLatin1StringView("LblInfo")));
    QVERIFY(!window.setSize({1, 1}));
    QVERIFY(!window.setPicture({}));
}

QTEST_MAIN(TestWidgetSkinWindow)
#include "tst_widgetskinwindow.moc"
