#include "skin/controls/KelLabel.h"

#include "PaintCounter.h"

#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Quorlin;

namespace {

const QPoint Inside(10, 5);
const QPoint Outside(10, 500);

} // namespace

class TestLabelEvents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void forwardsTheMouseButtons_data();
    void forwardsTheMouseButtons();
    void forwardsTheMouseMoving();
    void clicksWhenTheLeftButtonIsReleasedInside();
    void clicksWithNoOtherButton();
    void clicksNotWhenReleasedOutside();
    void forwardsADoubleClick();
    void countsTwoQuickClicksOnAButton();
    void forwardsKeys();
    void forwardsCharacters();
    void leavesKeysItDoesNotUseToOthers();
    void clicksByKeyboard_data();
    void clicksByKeyboard();
    void clicksOnceForAKeyHeldDown();
    void takesTheFocusOnlyWhenClickable();
    void tellsTheFocus();
    void raisesTheAccessKey();
    void clicksByTheAccessKeyWhenClickable();
    void followsTheAccessKeyOfTheCaption();
    void leadsFromOneToTheOtherOfEqualAccessKeys();
    void raisesNothingWhenDisabled();
    void bearsBeingDeletedByAHandler_data();
    void bearsBeingDeletedByAHandler();

private:
    [[nodiscard]] QStringList takeEvents() { return std::exchange(m_events, {}); }
    void record(KelLabel &label);
    [[nodiscard]] QPoint inWindow(QPoint place) const { return m_label->pos() + place; }
    void pressAlt(Qt::Key key) { QTest::keyClick(m_window.get(), key, Qt::AltModifier); }

    std::unique_ptr<QWidget> m_window;
    KelLabel *m_label = nullptr;
    QStringList m_events;
};

void TestLabelEvents::init()
{
    m_events.clear();
    m_window = std::make_unique<QWidget>();
    m_label = new KelLabel;
    m_label->Caption(QStringLiteral("&Help"));
    m_label->setMinimumSize(80, 20);
    auto *layout = new QVBoxLayout(m_window.get());
    layout->addWidget(m_label);
    layout->addWidget(new QPushButton);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    record(*m_label);
}

void TestLabelEvents::cleanup()
{
    m_window.reset();
}

void TestLabelEvents::record(KelLabel &label)
{
    const auto note = [this](const char *event, const QList<double> &values = {}) {
        QStringList words{QLatin1String(event)};
        for (const auto value : values)
            words.append(QString::number(value));
        m_events.append(words.join(u' '));
    };
    connect(&label, &KelLabel::AccessKeyPress, this,
            [=](int key) { note("AccessKeyPress", {double(key)}); });
    connect(&label, &KelLabel::Click, this, [=] { note("Click"); });
    connect(&label, &KelLabel::DblClick, this, [=] { note("DblClick"); });
    connect(&label, &KelLabel::EnterFocus, this, [=] { note("EnterFocus"); });
    connect(&label, &KelLabel::ExitFocus, this, [=] { note("ExitFocus"); });
    connect(&label, &KelLabel::KeyDown, this, [=](int key, int shift) {
        note("KeyDown", {double(key), double(shift)});
    });
    connect(&label, &KelLabel::KeyPress, this, [=](int key) { note("KeyPress", {double(key)}); });
    connect(&label, &KelLabel::KeyUp, this, [=](int key, int shift) {
        note("KeyUp", {double(key), double(shift)});
    });
    connect(&label, &KelLabel::MouseDown, this, [=](int button, int shift, qreal x, qreal y) {
        note("MouseDown", {double(button), double(shift), x, y});
    });
    connect(&label, &KelLabel::MouseMove, this, [=](int button, int shift, qreal x, qreal y) {
        note("MouseMove", {double(button), double(shift), x, y});
    });
    connect(&label, &KelLabel::MouseUp, this, [=](int button, int shift, qreal x, qreal y) {
        note("MouseUp", {double(button), double(shift), x, y});
    });
}

void TestLabelEvents::forwardsTheMouseButtons_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<int>("code");
    QTest::newRow("left") << Qt::LeftButton << 1;
    QTest::newRow("right") << Qt::RightButton << 2;
    QTest::newRow("middle") << Qt::MiddleButton << 4;
}

void TestLabelEvents::forwardsTheMouseButtons()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(int, code);
    QTest::mousePress(m_label, button, Qt::ShiftModifier | Qt::ControlModifier, Inside);
    QCOMPARE(takeEvents(), {QStringLiteral("MouseDown %1 3 10 5").arg(code)});
    QTest::mouseRelease(m_label, button, Qt::AltModifier, Inside);
    QCOMPARE(takeEvents().first(), QStringLiteral("MouseUp %1 4 10 5").arg(code));
}

void TestLabelEvents::forwardsTheMouseMoving()
{
    QTest::mouseMove(m_window->windowHandle(), inWindow(Inside));
    QTest::mouseMove(m_window->windowHandle(), inWindow(Inside + QPoint(1, 2)));
    QTRY_VERIFY(m_events.contains(QStringLiteral("MouseMove 0 0 11 7")));
    QMouseEvent dragged(QEvent::MouseMove, Inside, m_label->mapToGlobal(Inside), Qt::NoButton,
                        Qt::LeftButton | Qt::RightButton, Qt::NoModifier);
    m_events.clear();
    QCoreApplication::sendEvent(m_label, &dragged);
    QCOMPARE(takeEvents(), {QStringLiteral("MouseMove 3 0 10 5")});
}

void TestLabelEvents::clicksWhenTheLeftButtonIsReleasedInside()
{
    QTest::mouseClick(m_label, Qt::LeftButton, {}, Inside);
    const QStringList expected{QStringLiteral("MouseDown 1 0 10 5"),
                               QStringLiteral("MouseUp 1 0 10 5"), QStringLiteral("Click")};
    QCOMPARE(takeEvents(), expected);
}

void TestLabelEvents::clicksWithNoOtherButton()
{
    QTest::mouseClick(m_label, Qt::RightButton, {}, Inside);
    QTest::mouseClick(m_label, Qt::MiddleButton, {}, Inside);
    QVERIFY(!m_events.contains(QStringLiteral("Click")));
}

void TestLabelEvents::clicksNotWhenReleasedOutside()
{
    m_label->Clickable(true);
    QTest::mousePress(m_label, Qt::LeftButton, {}, Inside);
    QVERIFY(m_label->isHeld());
    QMouseEvent dragged(QEvent::MouseMove, Outside, m_label->mapToGlobal(Outside), Qt::NoButton,
                        Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_label, &dragged);
    QVERIFY(!m_label->isHeld());
    QTest::mouseRelease(m_label, Qt::LeftButton, {}, Outside);
    QVERIFY(!m_events.contains(QStringLiteral("Click")));
}

void TestLabelEvents::forwardsADoubleClick()
{
    QTest::mouseDClick(m_window->windowHandle(), Qt::LeftButton, {}, inWindow(Inside));
    const QStringList expected{QStringLiteral("MouseDown 1 0 10 5"),
                               QStringLiteral("MouseUp 1 0 10 5"), QStringLiteral("Click"),
                               QStringLiteral("DblClick"), QStringLiteral("MouseUp 1 0 10 5")};
    m_events.removeAll(QStringLiteral("MouseMove 0 0 10 5"));
    QCOMPARE(takeEvents(), expected);
    QTest::mouseDClick(m_window->windowHandle(), Qt::RightButton, {}, inWindow(Inside));
    QCOMPARE(m_events.count(QStringLiteral("MouseDown 2 0 10 5")), 2);
    QVERIFY(!m_events.contains(QStringLiteral("DblClick")));
}

void TestLabelEvents::countsTwoQuickClicksOnAButton()
{
    m_label->Clickable(true);
    QTest::mouseDClick(m_window->windowHandle(), Qt::LeftButton, {}, inWindow(Inside));
    QCOMPARE(m_events.count(QStringLiteral("Click")), 2);
    QCOMPARE(m_events.count(QStringLiteral("DblClick")), 1);
}

void TestLabelEvents::forwardsKeys()
{
    QKeyEvent down(QEvent::KeyPress, Qt::Key_F2, Qt::ShiftModifier);
    QCoreApplication::sendEvent(m_label, &down);
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_F2, Qt::ControlModifier);
    QCoreApplication::sendEvent(m_label, &up);
    const QStringList expected{QStringLiteral("KeyDown 113 1"), QStringLiteral("KeyUp 113 2")};
    QCOMPARE(takeEvents(), expected);
}

void TestLabelEvents::forwardsCharacters()
{
    QTest::keyClick(m_label, 'a');
    const QStringList expected{QStringLiteral("KeyDown 65 0"), QStringLiteral("KeyPress 97"),
                               QStringLiteral("KeyUp 65 0")};
    QCOMPARE(takeEvents(), expected);
}

void TestLabelEvents::leavesKeysItDoesNotUseToOthers()
{
    m_label->Clickable(true);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(m_label, &escape);
    QVERIFY(!escape.isAccepted());
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    QCoreApplication::sendEvent(m_label, &space);
    QVERIFY(space.isAccepted());
}

void TestLabelEvents::clicksByKeyboard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space bar") << Qt::Key_Space;
    QTest::newRow("Enter") << Qt::Key_Return;
    QTest::newRow("Enter of the keypad") << Qt::Key_Enter;
}

void TestLabelEvents::clicksByKeyboard()
{
    QFETCH(Qt::Key, key);
    QTest::keyClick(m_label, key);
    QVERIFY(!takeEvents().contains(QStringLiteral("Click")));
    m_label->Clickable(true);
    m_label->setFocus();
    QTest::keyPress(m_label, key);
    QCOMPARE(m_label->isHeld(), key == Qt::Key_Space);
    QTest::keyRelease(m_label, key);
    QCOMPARE(m_events.count(QStringLiteral("Click")), 1);
    QVERIFY(!m_label->isHeld());
}

void TestLabelEvents::clicksOnceForAKeyHeldDown()
{
    m_label->Clickable(true);
    m_label->setFocus();
    for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
        QTest::keyPress(m_label, key);
        for (const auto type :
             {QEvent::KeyRelease, QEvent::KeyPress, QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent repeated(type, key, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(m_label, &repeated);
        }
        QTest::keyRelease(m_label, key);
        QCOMPARE(takeEvents().count(QStringLiteral("Click")), 1);
    }
}

void TestLabelEvents::takesTheFocusOnlyWhenClickable()
{
    QCOMPARE(m_label->focusPolicy(), Qt::NoFocus);
    m_label->Clickable(true);
    QCOMPARE(m_label->focusPolicy(), Qt::StrongFocus);
    m_label->Clickable(false);
    QCOMPARE(m_label->focusPolicy(), Qt::NoFocus);
}

void TestLabelEvents::tellsTheFocus()
{
    m_label->Clickable(true);
    m_label->setFocus();
    QCOMPARE(takeEvents(), {QStringLiteral("EnterFocus")});
    QTest::keyPress(m_label, Qt::Key_Space);
    QTest::keyClick(m_label, Qt::Key_Tab);
    QVERIFY(!m_label->hasFocus());
    QVERIFY(!m_label->isHeld());
    QVERIFY(m_events.contains(QStringLiteral("ExitFocus")));
    QVERIFY(!m_events.contains(QStringLiteral("Click")));
}

void TestLabelEvents::raisesTheAccessKey()
{
    pressAlt(Qt::Key_H);
    QCOMPARE(takeEvents(), {QStringLiteral("AccessKeyPress 72")});
}

void TestLabelEvents::clicksByTheAccessKeyWhenClickable()
{
    m_label->Clickable(true);
    pressAlt(Qt::Key_H);
    const QStringList expected{QStringLiteral("AccessKeyPress 72"), QStringLiteral("EnterFocus"),
                               QStringLiteral("Click")};
    QCOMPARE(takeEvents(), expected);
    QVERIFY(m_label->hasFocus());
}

void TestLabelEvents::followsTheAccessKeyOfTheCaption()
{
    m_label->Caption(QStringLiteral("Cl&ose"));
    pressAlt(Qt::Key_H);
    QCOMPARE(takeEvents(), QStringList());
    pressAlt(Qt::Key_O);
    QCOMPARE(takeEvents(), {QStringLiteral("AccessKeyPress 79")});
    m_label->UseMnemonic(false);
    pressAlt(Qt::Key_O);
    QCOMPARE(takeEvents(), QStringList());
}

void TestLabelEvents::leadsFromOneToTheOtherOfEqualAccessKeys()
{
    auto *other = new KelLabel;
    other->Caption(QStringLiteral("&Home"));
    m_window->layout()->addWidget(other);
    record(*other);
    other->show();
    m_label->Clickable(true);
    other->Clickable(true);
    pressAlt(Qt::Key_H);
    const auto first = m_label->hasFocus();
    QVERIFY(first || other->hasFocus());
    pressAlt(Qt::Key_H);
    QCOMPARE(m_label->hasFocus(), !first);
    QVERIFY(!m_events.contains(QStringLiteral("Click")));
}

void TestLabelEvents::raisesNothingWhenDisabled()
{
    m_label->Clickable(true);
    m_label->Enabled(false);
    QTest::mouseClick(m_label, Qt::LeftButton, {}, Inside);
    QTest::mouseDClick(m_window->windowHandle(), Qt::LeftButton, {}, inWindow(Inside));
    QTest::mouseMove(m_label, Inside + QPoint(3, 3));
    QTest::keyClick(m_window.get(), Qt::Key_Space);
    pressAlt(Qt::Key_H);
    QCoreApplication::processEvents();
    QCOMPARE(takeEvents(), QStringList());
}

void TestLabelEvents::bearsBeingDeletedByAHandler_data()
{
    QTest::addColumn<QString>("event");
    for (const auto *event :
         {"MouseDown", "MouseUp", "Click", "KeyDown", "KeyPress", "KeyUp", "AccessKeyPress"})
        QTest::newRow(event) << QString::fromLatin1(event);
}

void TestLabelEvents::bearsBeingDeletedByAHandler()
{
    QFETCH(QString, event);
    m_label->Clickable(true);
    const QPointer<KelLabel> label(m_label);
    const auto erase = [label, &event](const char *name) {
        if (event == QLatin1String(name))
            delete label;
    };
    connect(label, &KelLabel::MouseDown, this, [=] { erase("MouseDown"); });
    connect(label, &KelLabel::MouseUp, this, [=] { erase("MouseUp"); });
    connect(label, &KelLabel::Click, this, [=] { erase("Click"); });
    connect(label, &KelLabel::KeyDown, this, [=] { erase("KeyDown"); });
    connect(label, &KelLabel::KeyPress, this, [=] { erase("KeyPress"); });
    connect(label, &KelLabel::KeyUp, this, [=] { erase("KeyUp"); });
    connect(label, &KelLabel::AccessKeyPress, this, [=] { erase("AccessKeyPress"); });
    if (event == QLatin1String("AccessKeyPress")) {
        pressAlt(Qt::Key_H);
    } else if (event.startsWith(QLatin1String("Key"))) {
        m_label->setFocus();
        QTest::keyClick(m_window->windowHandle(), Qt::Key_Space);
    } else {
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, inWindow(Inside));
    }
    QCoreApplication::processEvents();
    QVERIFY(label.isNull());
}

QTEST_MAIN(TestLabelEvents)
#include "tst_label_events.moc"
