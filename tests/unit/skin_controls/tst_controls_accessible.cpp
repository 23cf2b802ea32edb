#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using namespace Quorlin;

namespace {

/// A control that keeps what it tells assistive tools.
template <typename Control>
class Talking : public Control
{
public:
    [[nodiscard]] int told(QAccessible::Event kind) const { return int(m_told.count(kind)); }
    [[nodiscard]] QVariant lastValue() const { return m_value; }

protected:
    void announce(QAccessibleEvent &event) override
    {
        m_told.append(event.type());
        if (event.object() != this)
            QTest::qFail("it speaks of something else", __FILE__, __LINE__);
        if (event.type() == QAccessible::ValueChanged)
            m_value = static_cast<QAccessibleValueChangeEvent &>(event).value();
        Control::announce(event);
    }

private:
    QList<QAccessible::Event> m_told;
    QVariant m_value;
};

} // namespace

class TestControlsAccessible : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void presentsALabelAsText();
    void presentsAClickableLabelAsAButton();
    void namesALabelByItsTextWithoutMnemonics();
    void namesALabelAsItIsTold();
    void tellsTheAccessKey();
    void tellsThatALabelIsDisabled();
    void pressesAClickableLabel();
    void pressesNoOtherLabel();
    void tellsThatTheNameChanged();
    void tellsNothingWhenTheNameStays();
    void presentsAProgressBar();
    void tellsTheProgress();
    void neverSetsTheProgress();
    void tellsThatTheProgressChanged();
    void hidesThePartsOfAProgressBar();
};

void TestControlsAccessible::presentsALabelAsText()
{
    KelLabel label;
    const auto *interface = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(interface != nullptr);
    QCOMPARE(interface->role(), QAccessible::StaticText);
    QVERIFY(!interface->state().focusable);
    QVERIFY(!interface->state().disabled);
}

void TestControlsAccessible::presentsAClickableLabelAsAButton()
{
    KelLabel label;
    label.Clickable(true);
    const auto *interface = QAccessible::queryAccessibleInterface(&label);
    QCOMPARE(interface->role(), QAccessible::Button);
    QVERIFY(interface->state().focusable);
}

void TestControlsAccessible::namesALabelByItsTextWithoutMnemonics()
{
    KelLabel label;
    label.Caption(QStringLiteral("Save && &close\r\nnow"));
    const auto *interface = QAccessible::queryAccessibleInterface(&label);
    QCOMPARE(interface->text(QAccessible::Name), QStringLiteral("Save & close\nnow"));
}

void TestControlsAccessible::namesALabelAsItIsTold()
{
    KelLabel label;
    label.Caption(QStringLiteral("X"));
    label.setAccessibleName(QStringLiteral("Close"));
    const auto *interface = QAccessible::queryAccessibleInterface(&label);
    QCOMPARE(interface->text(QAccessible::Name), QStringLiteral("Close"));
}

void TestControlsAccessible::tellsTheAccessKey()
{
    KelLabel label;
    label.Clickable(true);
    label.Caption(QStringLiteral("&Help"));
    auto *interface = QAccessible::queryAccessibleInterface(&label);
    QCOMPARE(interface->text(QAccessible::Accelerator), QStringLiteral("Alt+H"));
    const auto *actions = interface->actionInterface();
    QCOMPARE(actions->keyBindingsForAction(QAccessibleActionInterface::pressAction()),
             {QStringLiteral("Alt+H")});
}

void TestControlsAccessible::tellsThatALabelIsDisabled()
{
    KelLabel label;
    label.Enabled(false);
    const auto *interface = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(interface->state().disabled);
}

void TestControlsAccessible::pressesAClickableLabel()
{
    KelLabel label;
    label.Clickable(true);
    const QSignalSpy clicks(&label, &KelLabel::Click);
    auto *actions = QAccessible::queryAccessibleInterface(&label)->actionInterface();
    QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicks.count(), 1);
}

void TestControlsAccessible::pressesNoOtherLabel()
{
    KelLabel label;
    const QSignalSpy clicks(&label, &KelLabel::Click);
    auto *actions = QAccessible::queryAccessibleInterface(&label)->actionInterface();
    QVERIFY(!actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    label.Clickable(true);
    label.Enabled(false);
    QVERIFY(!actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicks.count(), 0);
}

void TestControlsAccessible::tellsThatTheNameChanged()
{
    Talking<KelLabel> label;
    label.Caption(QStringLiteral("one"));
    QCOMPARE(label.told(QAccessible::NameChanged), 1);
    label.Caption(QStringLiteral("two"));
    QCOMPARE(label.told(QAccessible::NameChanged), 2);
}

void TestControlsAccessible::tellsNothingWhenTheNameStays()
{
    Talking<KelLabel> label;
    label.Caption(QStringLiteral("Help"));
    label.Caption(QStringLiteral("Help"));
    label.Caption(QStringLiteral("&Help"));
    QCOMPARE(label.told(QAccessible::NameChanged), 1);
    QCOMPARE(label.accessKey(), QChar(u'H'));
}

void TestControlsAccessible::presentsAProgressBar()
{
    KelProgressBar bar;
    bar.Caption(QStringLiteral("Converting"));
    const auto *interface = QAccessible::queryAccessibleInterface(&bar);
    QVERIFY(interface != nullptr);
    QCOMPARE(interface->role(), QAccessible::ProgressBar);
    QCOMPARE(interface->text(QAccessible::Name), QStringLiteral("Converting"));
}

void TestControlsAccessible::tellsTheProgress()
{
    KelProgressBar bar;
    bar.Max(300);
    bar.Value(126);
    auto *interface = QAccessible::queryAccessibleInterface(&bar);
    QCOMPARE(interface->text(QAccessible::Value), QStringLiteral("42 %"));
    const auto *value = interface->valueInterface();
    QVERIFY(value != nullptr);
    QCOMPARE(value->currentValue().toInt(), 42);
    QCOMPARE(value->minimumValue().toInt(), 0);
    QCOMPARE(value->maximumValue().toInt(), 100);
}

void TestControlsAccessible::neverSetsTheProgress()
{
    KelProgressBar bar;
    bar.Percent(42);
    QAccessible::queryAccessibleInterface(&bar)->valueInterface()->setCurrentValue(7);
    QCOMPARE(bar.Percent(), qint16(42));
}

void TestControlsAccessible::tellsThatTheProgressChanged()
{
    Talking<KelProgressBar> bar;
    bar.Percent(42);
    bar.Percent(42);
    QCOMPARE(bar.told(QAccessible::ValueChanged), 1);
    QCOMPARE(bar.lastValue().toInt(), 42);
}

void TestControlsAccessible::hidesThePartsOfAProgressBar()
{
    KelProgressBar bar;
    bar.Percent(42);
    const auto *interface = QAccessible::queryAccessibleInterface(&bar);
    QCOMPARE(interface->childCount(), 0);
    QCOMPARE(interface->child(0), nullptr);
}

QTEST_MAIN(TestControlsAccessible)
#include "tst_controls_accessible.moc"
