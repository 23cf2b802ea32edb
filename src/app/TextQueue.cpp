#include "app/TextQueue.h"

namespace Quorlin {

namespace {

/// Longer than a timer without a delay takes, whichever of the two was started first.
constexpr int TurnMilliseconds = 2;

} // namespace

TextQueue::TextQueue()
{
    m_turn.setInterval(TurnMilliseconds);
    connect(&m_turn, &QTimer::timeout, this, &TextQueue::handOn);
}

void TextQueue::add(const QString &text)
{
    m_texts.append(text);
    if (m_turn.isActive())
        return;
    m_turn.start();
    handOn();
}

void TextQueue::clear()
{
    m_texts.clear();
}

void TextQueue::handOn()
{
    if (m_texts.isEmpty())
        m_turn.stop();
    else
        Q_EMIT next(m_texts.takeFirst());
}

} // namespace Quorlin
