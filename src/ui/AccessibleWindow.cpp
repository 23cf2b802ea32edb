#include "ui/AccessibleWindow.h"

#include "ui/SkinnedWindow.h"

namespace Quorlin {

namespace {

QAccessibleInterface *make(const QString &, QObject *object)
{
    auto *const window = qobject_cast<SkinnedWindow *>(object);
    return window ? new AccessibleWindow(*window) : nullptr;
}

QAccessible::Role roleOf(const SkinnedWindow &window)
{
    return window.parentWidget() ? QAccessible::Dialog : QAccessible::Window;
}

} // namespace

AccessibleWindow::AccessibleWindow(SkinnedWindow &window)
    : QAccessibleWidget(&window, roleOf(window))
{
}

void AccessibleWindow::install()
{
    QAccessible::installFactory(make);
}

} // namespace Quorlin
