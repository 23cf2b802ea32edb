#include "app/taskbar.h"

#include <QWidget>

namespace Quorlin {

namespace {

/// The one that the system knows. It is made now only where it matters: a widget without a
/// parent gets one that belongs to nobody.
QWindow *handleOf(QWidget &form)
{
    if (form.windowHandle() == nullptr && form.parentWidget() != nullptr)
        static_cast<void>(form.winId());
    return form.windowHandle();
}

} // namespace

namespace taskbar {

Entry entryOf(const QWidget &form)
{
    return {form.windowTitle(), form.windowIcon()};
}

void setEntry(QWidget &form, const Entry &entry)
{
    form.setWindowTitle(entry.caption);
    form.setWindowIcon(entry.icon);
}

QPointer<QWindow> ownerOf(QWidget &form)
{
    const auto *const handle = handleOf(form);
    return handle == nullptr ? nullptr : handle->transientParent();
}

void setOwner(QWidget &form, QWindow *owner)
{
    if (auto *const handle = handleOf(form))
        handle->setTransientParent(owner);
}

} // namespace taskbar

} // namespace Quorlin
