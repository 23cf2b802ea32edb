#pragma once

#include <QEvent>
#include <QList>
#include <QString>
#include <QWidget>

#include <functional>

namespace Quorlin {

/// A window that keeps the texts which reach it.
class MarkedWindow : public QWidget
{
    Q_OBJECT

public:
    QList<QString> texts;
    std::function<void()> whileReceiving;
    /// What the desktop's variable held when the window's state last changed.
    QByteArray tokenAtChange;

    Q_INVOKABLE void ReceiveMessage(const QString &Message)
    {
        texts.append(Message);
        if (whileReceiving)
            whileReceiving();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::WindowStateChange)
            tokenAtChange = qgetenv("XDG_ACTIVATION_TOKEN");
        QWidget::changeEvent(event);
    }
};

} // namespace Quorlin
