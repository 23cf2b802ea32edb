#include "ui/SkinnedWindow.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>

#include <memory>

using namespace Quorlin;

/// Here the system does not move windows, so that the window must do it itself.
class TestSkinnedWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theLeftButtonMovesTheWindow();
    void everyStepOfTheMouseMovesIt();
    void otherButtonsDoNotMoveIt();
    void aMouseWithoutAButtonDoesNotMoveIt();
    void itStaysWhenTheButtonIsUp();
    void aButtonThatWentDownElsewhereDoesNotMoveIt();
    void aPictureOnItIsFreeSurface();
    void aControlOnItIsNot();

private:
    void send(QWidget &to, QEvent::Type type, QPoint at, Qt::MouseButton button,
              Qt::MouseButtons down) const;
    void drag(QWidget &from, Qt::MouseButton button, QPoint by) const;

    std::unique_ptr<SkinnedWindow> m_window;
};

namespace {

constexpr QPoint Start(100, 120);
constexpr QPoint Grip(30, 40);

} // namespace

void TestSkinnedWindow::init()
{
    m_window = std::make_unique<SkinnedWindow>();
    m_window->resize(200, 100);
    m_window->move(Start);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestSkinnedWindow::send(QWidget &to, QEvent::Type type, QPoint at, Qt::MouseButton button,
                             Qt::MouseButtons down) const
{
    QMouseEvent event(type, at, to.mapToGlobal(at), button, down, Qt::NoModifier);
    QApplication::sendEvent(&to, &event);
}

/// Presses at the grip and moves the mouse; the button stays down.
void TestSkinnedWindow::drag(QWidget &from, Qt::MouseButton button, QPoint by) const
{
    send(from, QEvent::MouseButtonPress, Grip, button, button);
    send(from, QEvent::MouseMove, Grip + by, Qt::NoButton, button);
}

void TestSkinnedWindow::theLeftButtonMovesTheWindow()
{
    drag(*m_window, Qt::LeftButton, {50, -20});
    QCOMPARE(m_window->pos(), Start + QPoint(50, -20));
}

void TestSkinnedWindow::everyStepOfTheMouseMovesIt()
{
    drag(*m_window, Qt::LeftButton, {1, 0});
    QCOMPARE(m_window->pos(), Start + QPoint(1, 0));
    // The window went along, so the grip lies under the mouse again.
    send(*m_window, QEvent::MouseMove, Grip + QPoint(0, 7), Qt::NoButton, Qt::LeftButton);
    QCOMPARE(m_window->pos(), Start + QPoint(1, 7));
}

void TestSkinnedWindow::otherButtonsDoNotMoveIt()
{
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        drag(*m_window, button, {50, 20});
        QCOMPARE(m_window->pos(), Start);
    }
}

void TestSkinnedWindow::aMouseWithoutAButtonDoesNotMoveIt()
{
    send(*m_window, QEvent::MouseMove, {90, 90}, Qt::NoButton, Qt::NoButton);
    QCOMPARE(m_window->pos(), Start);
}

void TestSkinnedWindow::itStaysWhenTheButtonIsUp()
{
    drag(*m_window, Qt::LeftButton, {5, 5});
    send(*m_window, QEvent::MouseButtonRelease, Grip, Qt::LeftButton, Qt::NoButton);
    send(*m_window, QEvent::MouseMove, {90, 90}, Qt::NoButton, Qt::NoButton);
    send(*m_window, QEvent::MouseMove, {90, 90}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(m_window->pos(), Start + QPoint(5, 5));
}

void TestSkinnedWindow::aButtonThatWentDownElsewhereDoesNotMoveIt()
{
    send(*m_window, QEvent::MouseMove, {90, 90}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(m_window->pos(), Start);
}

void TestSkinnedWindow::aPictureOnItIsFreeSurface()
{
    QLabel picture(m_window.get());
    picture.setGeometry(10, 10, 100, 80);
    picture.show();
    drag(picture, Qt::LeftButton, {12, 3});
    QCOMPARE(m_window->pos(), Start + QPoint(12, 3));
}

void TestSkinnedWindow::aControlOnItIsNot()
{
    QPushButton button(m_window.get());
    button.setGeometry(10, 10, 100, 80);
    button.show();
    drag(button, Qt::LeftButton, {12, 3});
    QCOMPARE(m_window->pos(), Start);
}

QTEST_MAIN(TestSkinnedWindow)
#include "tst_skinned_window.moc"
