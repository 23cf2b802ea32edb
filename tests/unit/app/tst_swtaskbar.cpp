#include "app/SWTaskbar.h"

#include "app/TaskbarProxy.h"

#include <QTest>
#include <QWidget>

using namespace Quorlin;
using Command = TaskbarProxy::Command;

class SWTaskbarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void leavesOneProxyWhenCreatedTwice();
    void doesNothingForAWindowWithoutProxy();
    void offersNoMove();
    void doesNotKeepTheSystemFromMovingTheWindow();
    void givesTheWindowTheCaption();
    void givesTheWindowTheProgramsIconInSmallAndBig();
    void keepsTheIconThatTheWindowHas();
    void putsEverythingBack();
    void standsForItselfWhileItHasAProxy();
    void keepsThePreviousOwnerUntilItIsPutBack();
    void bearsAnOwnerThatHasGone();
    void passesCommandsOnToTheWindow();
    void bearsAWindowThatClosesItselfAway();
    void forgetsWindowsThatHaveGone();
    void keepsWindowsApart();
    void bearsNoWindowAtAll();
    void doesNotShowTheWindow();

private:
    static std::unique_ptr<QWidget> borderless(QWidget *parent = nullptr)
    {
        return std::make_unique<QWidget>(parent, Qt::Window | Qt::FramelessWindowHint);
    }
};

void SWTaskbarTest::cleanup()
{
    QCOMPARE(SWTaskbar::proxiedWindows(), 0);
}

void SWTaskbarTest::leavesOneProxyWhenCreatedTwice()
{
    const auto form = borderless();
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("one"));
    auto *const proxy = SWTaskbar::proxyOf(form.get());
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("two"));
    QCOMPARE(SWTaskbar::proxyOf(form.get()), proxy);
    QCOMPARE(SWTaskbar::proxiedWindows(), 1);
    QCOMPARE(form->findChildren<TaskbarProxy *>().size(), 1);
    QCOMPARE(form->windowTitle(), QStringLiteral("one"));
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

void SWTaskbarTest::doesNothingForAWindowWithoutProxy()
{
    const auto form = borderless();
    form->setWindowTitle(QStringLiteral("own"));
    SWTaskbar::DestroyTaskbarProxy(form.get());
    QCOMPARE(form->windowTitle(), QStringLiteral("own"));
    QCOMPARE(SWTaskbar::proxyOf(form.get()), nullptr);
}

void SWTaskbarTest::offersNoMove()
{
    const auto form = borderless();
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("one"));
    auto *const proxy = SWTaskbar::proxyOf(form.get());
    QCOMPARE(proxy->menu(), (QList<Command>{Command::Restore, Command::Minimise, Command::Close}));
    const auto place = form->pos();
    proxy->proxyProcedure(Command::Move);
    QCOMPARE(form->pos(), place);
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

/// The window itself is dragged by the system; only the entry has no Move.
void SWTaskbarTest::doesNotKeepTheSystemFromMovingTheWindow()
{
    const auto form = borderless();
    const auto before = form->windowFlags();
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("one"));
    QCOMPARE(form->windowFlags(), before);
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

void SWTaskbarTest::givesTheWindowTheCaption()
{
    const auto form = borderless();
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("Quorlin"));
    QCOMPARE(form->windowTitle(), QStringLiteral("Quorlin"));
    QCOMPARE(SWTaskbar::proxyOf(form.get())->entry().caption, QStringLiteral("Quorlin"));
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

void SWTaskbarTest::givesTheWindowTheProgramsIconInSmallAndBig()
{
    const auto form = borderless();
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("Quorlin"));
    for (const auto size : {16, 32, 128}) {
        const auto picture = form->windowIcon().pixmap(QSize(size, size), 1.0).toImage();
        QCOMPARE(picture.size(), QSize(size, size));
        QVERIFY(picture.pixelColor(size / 2, size / 2).alpha() > 0);
    }
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

void SWTaskbarTest::keepsTheIconThatTheWindowHas()
{
    const auto form = borderless();
    QPixmap red(16, 16);
    red.fill(Qt::red);
    form->setWindowIcon(red);
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("Quorlin"));
    QCOMPARE(form->windowIcon().pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

void SWTaskbarTest::putsEverythingBack()
{
    const auto form = borderless();
    form->setWindowTitle(QStringLiteral("own"));
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("Quorlin"));
    SWTaskbar::DestroyTaskbarProxy(form.get());
    QCOMPARE(form->windowTitle(), QStringLiteral("own"));
    QVERIFY(form->windowIcon().isNull());
    QVERIFY(!form->property(SWTaskbar::ProxyProperty).isValid());
    QVERIFY(form->findChildren<TaskbarProxy *>().isEmpty());
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("again"));
    QCOMPARE(form->windowTitle(), QStringLiteral("again"));
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

/// A taskbar leaves out windows that belong to another.
void SWTaskbarTest::standsForItselfWhileItHasAProxy()
{
    QWidget owner;
    owner.show();
    const auto form = borderless(&owner);
    form->show();
    QCOMPARE(form->windowHandle()->transientParent(), owner.windowHandle());
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("Quorlin"));
    QCOMPARE(form->windowHandle()->transientParent(), nullptr);
    SWTaskbar::DestroyTaskbarProxy(form.get());
    QCOMPARE(form->windowHandle()->transientParent(), owner.windowHandle());
}

void SWTaskbarTest::keepsThePreviousOwnerUntilItIsPutBack()
{
    QWidget owner;
    owner.show();
    const auto form = borderless(&owner);
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("Quorlin"));
    auto *const proxy = SWTaskbar::proxyOf(form.get());
    QCOMPARE(proxy->previousOwner.data(), owner.windowHandle());
    SWTaskbar::SetProxyOwner(form.get(), false, proxy);
    QCOMPARE(form->windowHandle()->transientParent(), owner.windowHandle());
    SWTaskbar::SetProxyOwner(form.get(), true, proxy);
    QCOMPARE(form->windowHandle()->transientParent(), nullptr);
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

void SWTaskbarTest::bearsAnOwnerThatHasGone()
{
    auto owner = std::make_unique<QWidget>();
    owner->show();
    const auto form = borderless();
    form->show();
    form->windowHandle()->setTransientParent(owner->windowHandle());
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("Quorlin"));
    owner.reset();
    SWTaskbar::DestroyTaskbarProxy(form.get());
    QCOMPARE(form->windowHandle()->transientParent(), nullptr);
}

void SWTaskbarTest::passesCommandsOnToTheWindow()
{
    const auto form = borderless();
    form->show();
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("Quorlin"));
    auto *const proxy = SWTaskbar::proxyOf(form.get());
    proxy->proxyProcedure(Command::Minimise);
    QVERIFY(form->isMinimized());
    proxy->proxyProcedure(Command::Restore);
    QVERIFY(!form->isMinimized());
    proxy->proxyProcedure(Command::Close);
    QVERIFY(!form->isVisible());
    SWTaskbar::DestroyTaskbarProxy(form.get());
}

void SWTaskbarTest::bearsAWindowThatClosesItselfAway()
{
    auto *const form = borderless().release();
    const QPointer<QWidget> watched(form);
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->show();
    SWTaskbar::CreateTaskbarProxy(form, QStringLiteral("Quorlin"));
    SWTaskbar::proxyOf(form)->proxyProcedure(Command::Close);
    QTRY_VERIFY(watched.isNull());
    QCOMPARE(SWTaskbar::proxiedWindows(), 0);
}

void SWTaskbarTest::forgetsWindowsThatHaveGone()
{
    auto gone = borderless();
    SWTaskbar::CreateTaskbarProxy(gone.get(), QStringLiteral("one"));
    const QPointer<TaskbarProxy> proxy(SWTaskbar::proxyOf(gone.get()));
    QVERIFY(!proxy.isNull());
    gone.reset();
    QVERIFY(proxy.isNull());
    QCOMPARE(SWTaskbar::proxiedWindows(), 0);
}

void SWTaskbarTest::keepsWindowsApart()
{
    const auto one = borderless();
    const auto two = borderless();
    SWTaskbar::CreateTaskbarProxy(one.get(), QStringLiteral("one"));
    SWTaskbar::CreateTaskbarProxy(two.get(), QStringLiteral("two"));
    QCOMPARE(SWTaskbar::proxiedWindows(), 2);
    SWTaskbar::DestroyTaskbarProxy(one.get());
    QCOMPARE(SWTaskbar::proxyOf(one.get()), nullptr);
    QCOMPARE(SWTaskbar::proxyOf(two.get())->entry().caption, QStringLiteral("two"));
    SWTaskbar::DestroyTaskbarProxy(two.get());
}

void SWTaskbarTest::bearsNoWindowAtAll()
{
    SWTaskbar::CreateTaskbarProxy(nullptr, QStringLiteral("one"));
    SWTaskbar::DestroyTaskbarProxy(nullptr);
    SWTaskbar::SetProxyOwner(nullptr, true, nullptr);
    QCOMPARE(SWTaskbar::proxyOf(nullptr), nullptr);
}

void SWTaskbarTest::doesNotShowTheWindow()
{
    const auto form = borderless();
    SWTaskbar::CreateTaskbarProxy(form.get(), QStringLiteral("one"));
    QVERIFY(!form->isVisible());
    form->show();
    SWTaskbar::DestroyTaskbarProxy(form.get());
    QVERIFY(form->isVisible());
}

QTEST_MAIN(SWTaskbarTest)
#include "tst_swtaskbar.moc"
