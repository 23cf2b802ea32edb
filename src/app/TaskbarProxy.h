#pragma once

#include "app/taskbar.h"

#include <QList>
#include <QObject>

class QWidget;

namespace Quorlin {

/// Stands for a borderless window in the taskbar: has its caption and icons, and passes the
/// commands of the entry on to it. Belongs to the window and goes with it.
class TaskbarProxy : public QObject
{
    Q_OBJECT

public:
    enum class Command { Restore, Minimise, Close, Move };
    Q_ENUM(Command)

    TaskbarProxy(QWidget &form, taskbar::Entry entry);

    [[nodiscard]] const taskbar::Entry &entry() const { return m_entry; }
    /// What the entry's menu offers.
    [[nodiscard]] const QList<Command> &menu() const { return m_menu; }
    void removeFromMenu(Command command) { m_menu.removeAll(command); }

    /// Does what somebody asked for at the entry, on the real window. What the menu does not
    /// offer is not done. Desktops that act on the window itself never ask.
    void proxyProcedure(Command command);

    /// How the window stood before.
    taskbar::Entry previousEntry;
    QPointer<QWindow> previousOwner;

private:
    QWidget &m_form;
    taskbar::Entry m_entry;
    QList<Command> m_menu;
};

} // namespace Quorlin
