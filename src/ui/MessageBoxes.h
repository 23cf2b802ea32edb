#pragma once

#include "winsupport/MessageService.h"

#include <QPointer>
#include <QWidget>

namespace Quorlin {

/// Message boxes on the screen, in front of the window that they belong to.
class MessageBoxes : public MessageService
{
public:
    /// The window that boxes belong to from now on; nullptr for none. It is not owned.
    void setWindow(QWidget *window) { m_window = window; }

    /// Texts are shown as they are, never as marked-up text.
    void show(const QString &text, MessageStyle style, const QString &title) override;
    void showWithDetail(const QString &text, MessageStyle style, const QString &title,
                        const QString &detail) override;

private:
    QPointer<QWidget> m_window;
};

} // namespace Quorlin
