#include "convert/EventQueue.h"

#include <QPointer>

#include <utility>

namespace Quorlin {

void EventQueue::post(std::function<void()> event)
{
    m_events.push_back(std::move(event));
    if (!m_delivering && m_events.size() == 1)
        wake();
}

void EventQueue::wake()
{
    QMetaObject::invokeMethod(this, &EventQueue::deliver, Qt::QueuedConnection);
}

void EventQueue::deliver()
{
    if (m_delivering || m_events.empty())
        return;
    m_delivering = true;
    const auto event = std::move(m_events.front());
    m_events.pop_front();
    const QPointer<EventQueue> self(this);
    event();
    if (!self)
        return; // the handler ended the whole
    m_delivering = false;
    if (!m_events.empty())
        wake();
}

} // namespace Quorlin
