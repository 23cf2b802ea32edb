#include "app/TaskbarProxy.h"

#include <QWidget>

namespace Quorlin {

TaskbarProxy::TaskbarProxy(QWidget &form, taskbar::Entry entry)
    : QObject(&form), m_form(form), m_entry(std::move(entry)),
      m_menu({Command::Restore, Command::Minimise, Command::Close, Command::Move})
{
}

void TaskbarProxy::proxyProcedure(Command command)
{
    if (!m_menu.contains(command))
        return;
    switch (command) {
    case Command::Restore:
        m_form.setWindowState(m_form.windowState() & ~Qt::WindowMinimized);
        break;
    case Command::Minimise:
        m_form.setWindowState(m_form.windowState() | Qt::WindowMinimized);
        break;
    case Command::Close:
        m_form.close();
        break;
    case Command::Move:
        break;
    }
}

} // namespace Quorlin
