#pragma once

#include <QString>

class QWidget;

namespace Quorlin {

class TaskbarProxy;

/// Gives borderless windows an entry in the taskbar. Belongs to the thread of the windows.
namespace SWTaskbar {

/// The property of a window that holds its proxy.
inline constexpr auto ProxyProperty = "nvhWndProxy";

/// Gives a window an entry with this caption and the window's icons, or the program's own where
/// it has none. Does nothing when the window has an entry.
void CreateTaskbarProxy(QWidget *form, const QString &caption);

/// Takes the entry away and gives the window back what it had before. Does nothing when the
/// window has none.
void DestroyTaskbarProxy(QWidget *form);

/// @param attach true: the window stands in the taskbar for itself from now on, and what it
/// belonged to is kept; false: it belongs to that again.
void SetProxyOwner(QWidget *form, bool attach, TaskbarProxy *proxy);

/// The entry of a window; null when it has none.
[[nodiscard]] TaskbarProxy *proxyOf(const QWidget *form);

/// How many windows have an entry. Those that have gone do not count.
[[nodiscard]] int proxiedWindows();

} // namespace SWTaskbar

} // namespace Quorlin
