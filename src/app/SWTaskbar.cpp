#include "app/SWTaskbar.h"

#include "app/TaskbarProxy.h"

#include <QVariant>
#include <QWidget>

namespace Quorlin {

namespace {

using Windows = QList<QPointer<QWidget>>;

/// The windows that have a proxy and still exist.
Windows &windows()
{
    static Windows theWindows;
    theWindows.removeAll(QPointer<QWidget>());
    return theWindows;
}

bool isListed(const QWidget *form)
{
    return form != nullptr && windows().contains(const_cast<QWidget *>(form));
}

QIcon iconOf(const taskbar::Entry &entry)
{
    return entry.icon.isNull() ? QIcon(QStringLiteral(":/quorlin/quorlin.svg")) : entry.icon;
}

} // namespace

namespace SWTaskbar {

void CreateTaskbarProxy(QWidget *form, const QString &caption)
{
    if (form == nullptr || isListed(form))
        return;
    const auto previous = taskbar::entryOf(*form);
    auto *const proxy = new TaskbarProxy(*form, {caption, iconOf(previous)});
    proxy->previousEntry = previous;
    proxy->removeFromMenu(TaskbarProxy::Command::Move);
    taskbar::setEntry(*form, proxy->entry());
    SetProxyOwner(form, true, proxy);
    form->setProperty(ProxyProperty, QVariant::fromValue<QObject *>(proxy));
    windows().append(form);
}

void DestroyTaskbarProxy(QWidget *form)
{
    auto *const proxy = proxyOf(form);
    if (proxy == nullptr)
        return;
    SetProxyOwner(form, false, proxy);
    taskbar::setEntry(*form, proxy->previousEntry);
    delete proxy;
    form->setProperty(ProxyProperty, {});
    windows().removeAll(form);
}

void SetProxyOwner(QWidget *form, bool attach, TaskbarProxy *proxy)
{
    if (form == nullptr || proxy == nullptr)
        return;
    if (attach)
        proxy->previousOwner = taskbar::ownerOf(*form);
    taskbar::setOwner(*form, attach ? nullptr : proxy->previousOwner.data());
}

TaskbarProxy *proxyOf(const QWidget *form)
{
    return isListed(form)
               ? qobject_cast<TaskbarProxy *>(form->property(ProxyProperty).value<QObject *>())
               : nullptr;
}

int proxiedWindows()
{
    return static_cast<int>(windows().size());
}

} // namespace SWTaskbar

} // namespace Quorlin
