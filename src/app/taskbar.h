#pragma once

#include <QIcon>
#include <QPointer>
#include <QString>
#include <QWindow>

class QWidget;

namespace Quorlin {

/// How a window stands in the system's taskbar. Where a borderless window can have an entry of
/// its own, these are that window's attributes. Nothing here shows or hides a window, or takes
/// from it that the system may move it.
namespace taskbar {

struct Entry
{
    QString caption;
    /// Drawn small in the taskbar and big where programs are switched.
    QIcon icon;
};

[[nodiscard]] Entry entryOf(const QWidget &form);
void setEntry(QWidget &form, const Entry &entry);

/// The window that a window belongs to; null when it stands alone. One that belongs to another
/// has no entry.
[[nodiscard]] QPointer<QWindow> ownerOf(QWidget &form);
void setOwner(QWidget &form, QWindow *owner);

} // namespace taskbar

} // namespace Quorlin
