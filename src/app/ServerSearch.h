#pragma once

#include <functional>

namespace Quorlin {

/// The wait of a start that finds an earlier instance, until there is somebody to send to.
class ServerSearch
{
public:
    enum class Result {
        ServerFound,
        NowFirst, ///< the earlier instance has ended meanwhile and this one has taken its mark
        NotAnswering
    };

    static constexpr int FirstPause = 200; ///< milliseconds
    static constexpr int Pause = 500;      ///< milliseconds
    static constexpr int MostAttempts = 20;

    /// What the search does in the world.
    struct Steps
    {
        std::function<bool()> getServer;
        std::function<bool()> prevInstance;
        std::function<void(int milliseconds)> sleep;
    };

    /// @param attempts made before.
    explicit ServerSearch(Steps steps, int attempts = 0);

    /// Looks, waits FirstPause, then goes on looking and waiting Pause while fewer than
    /// MostAttempts were made. The number of attempts never grows: an instance that is busy
    /// starting is waited for as long as it takes.
    [[nodiscard]] Result run() const;

    [[nodiscard]] int attempts() const { return m_attempts; }

private:
    Steps m_steps;
    const int m_attempts;

    [[nodiscard]] bool lookAfter(int pause) const;
};

} // namespace Quorlin
