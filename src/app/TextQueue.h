#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

namespace Quorlin {

/// Hands texts on one by one, in their order. Between two of them the event loop gets a turn, in
/// which the receiver's timers fire: a window joins texts that come before it has handled the
/// last one, and of many starts at once not one may be lost in that.
class TextQueue : public QObject
{
    Q_OBJECT

public:
    TextQueue();

    /// The first text after a rest is handed on before this returns.
    void add(const QString &text);
    /// Forgets what has not been handed on.
    void clear();

Q_SIGNALS:
    void next(const QString &text);

private:
    void handOn();

    QStringList m_texts;
    QTimer m_turn;
};

} // namespace Quorlin
