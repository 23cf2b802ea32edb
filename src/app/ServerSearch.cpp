#include "app/ServerSearch.h"

#include <utility>

namespace Quorlin {

ServerSearch::ServerSearch(Steps steps, int attempts)
    : m_steps(std::move(steps)), m_attempts(attempts)
{
}

bool ServerSearch::lookAfter(int pause) const
{
    m_steps.sleep(pause);
    return m_steps.getServer();
}

ServerSearch::Result ServerSearch::run() const
{
    bool isFound = m_steps.getServer() || lookAfter(FirstPause);
    while (!isFound && m_attempts < MostAttempts) {
        if (!m_steps.prevInstance())
            return Result::NowFirst;
        isFound = lookAfter(Pause);
    }
    return isFound ? Result::ServerFound : Result::NotAnswering;
}

} // namespace Quorlin
