#include "ui/SkinnedWindow.h"

#include <QAccessible>
#include <QTest>

using namespace Quorlin;

class TestAccessibleWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWindowIsOne();
    void aWindowOfAnotherIsADialog();
};

void TestAccessibleWindow::aWindowIsOne()
{
    SkinnedWindow window;
    window.setWindowTitle(QStringLiteral("title"));
    auto *const spoken = QAccessible::queryAccessibleInterface(&window);
    QVERIFY(spoken);
    QCOMPARE(spoken->role(), QAccessible::Window);
    QCOMPARE(spoken->text(QAccessible::Name), QStringLiteral("title"));
}

void TestAccessibleWindow::aWindowOfAnotherIsADialog()
{
    SkinnedWindow owner;
    auto *const window = new SkinnedWindow(&owner);
    auto *const spoken = QAccessible::queryAccessibleInterface(window);
    QVERIFY(spoken);
    QCOMPARE(spoken->role(), QAccessible::Dialog);
}

QTEST_MAIN(TestAccessibleWindow)
#include "tst_accessible_window.moc"
