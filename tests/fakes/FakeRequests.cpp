#include "fakes/FakeRequests.h"

#include <iostream>
#include <string>

namespace Quorlin {

FakeRequests::FakeRequests() : m_reader([this] { read(); }) {}

FakeRequests::~FakeRequests()
{
    m_reader.detach(); // it may still wait for input that never comes
}

void FakeRequests::read()
{
    std::string line;
    while (std::getline(std::cin, line)) {
        const std::lock_guard lock(m_mutex);
        m_lines.push_back(QByteArray::fromStdString(line));
        m_changed.notify_all();
    }
    const std::lock_guard lock(m_mutex);
    m_ended = true;
    m_changed.notify_all();
}

std::optional<QByteArray> FakeRequests::next()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_ended || !m_lines.empty(); });
    if (m_lines.empty())
        return std::nullopt;
    auto line = m_lines.front();
    m_lines.pop_front();
    return line;
}

bool FakeRequests::waitForEnd(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, time, [this] { return m_ended; });
}

} // namespace Quorlin
