#include "app/TextQueue.h"

namespace Quorlin {

namespace {

/// Longer than a timer without a delay takes, whichever of the two was started first.
constexpr int TurnMilliseconds = 2;

} // namespace

TextQueue::TextQueue()
{
    m_turn.setInterval(TurnMilliseconds);
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &TextQueue::handOn);
}

void TextQueue::add(const QString &text)
{
    m_texts.append(text);
    if (!m_turn.isActive())
        handOn();
}

void TextQueue::clear()
{
    m_texts.clear();
}

/// The turn is counted from the end: on a busy machine the receiver may start its own timer late,
/// and that one must still be the first to fire.
void TextQueue::handOn()
{
    if (m_texts.isEmpty())
        return;
    m_turn.start();
    Q_EMIT next(m_texts.takeFirst());
    m_turn.start();
}

} // namespace Quorlin
