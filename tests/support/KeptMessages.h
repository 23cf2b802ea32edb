#pragma once

#include "winsupport/MessageService.h"

#include <QList>
#include <QString>

#include <functional>
#include <utility>

namespace Quorlin {

/// Keeps messages instead of showing them.
class KeptMessages : public MessageService
{
public:
    struct Message
    {
        QString text;
        MessageStyle style;
        QString title;
        QString detail{};
    };

    void show(const QString &text, MessageStyle style, const QString &title) override
    {
        showWithDetail(text, style, title, {});
    }
    void showWithDetail(const QString &text, MessageStyle style, const QString &title,
                        const QString &detail) override
    {
        m_all.append({text, style, title, detail});
        if (m_whileShown)
            m_whileShown();
    }

    [[nodiscard]] const QList<Message> &all() const { return m_all; }
    void clear() { m_all.clear(); }
    /// Called while a message is on the screen.
    void setWhileShown(std::function<void()> call) { m_whileShown = std::move(call); }

private:
    QList<Message> m_all;
    std::function<void()> m_whileShown;
};

} // namespace Quorlin
