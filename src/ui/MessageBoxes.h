#pragma once

#include "skin/SkinLook.h"
#include "winsupport/MessageService.h"

#include <QPointer>
#include <QWidget>

#include <optional>

namespace Quorlin {

/// Message boxes on the screen, in front of the window that they belong to.
class MessageBoxes : public MessageService
{
public:
    /// The window that boxes belong to from now on; nullptr for none. It is not owned.
    void setWindow(QWidget *window) { m_window = window; }
    /// What boxes look like from now on; until the first call, as the desktop has it.
    void setLook(const SkinLook &look) { m_look = look; }

    /// The text is shown as it is, never as marked-up text.
    void show(const QString &text, MessageStyle style, const QString &title) override;

private:
    QPointer<QWidget> m_window;
    std::optional<SkinLook> m_look;
};

} // namespace Quorlin
