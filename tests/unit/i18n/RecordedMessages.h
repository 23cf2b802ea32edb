#pragma once

#include "winsupport/MessageService.h"

#include <QList>

#include <functional>

/// Keeps messages instead of showing them.
class RecordedMessages : public Quorlin::MessageService
{
public:
    struct Message
    {
        QString text;
        Quorlin::MessageStyle style;
        QString title;
    };

    void show(const QString &text, Quorlin::MessageStyle style, const QString &title) override
    {
        m_all.append({text, style, title});
        if (m_whileShown)
            m_whileShown();
    }

    [[nodiscard]] const QList<Message> &all() const { return m_all; }
    /// Called while a message is on the screen.
    void setWhileShown(std::function<void()> call) { m_whileShown = std::move(call); }

private:
    QList<Message> m_all;
    std::function<void()> m_whileShown;
};
