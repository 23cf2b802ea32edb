#pragma once

#include "component/confinement/Confinement.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace Quorlin {

/// What is started, where and with which surroundings.
struct EngineCommand
{
    QString program;
    QStringList arguments;
    QStringList environment;                        ///< whole environment, each "NAME=value"
    QString folder;                                 ///< working folder
    std::shared_ptr<const Confinement> confinement; ///< entered before the program runs
};

/// The process of the office engine. It stays in the process group of this process and dies
/// with it, however this one ends. One source per system stands beside this header.
class EngineProcess
{
public:
    EngineProcess() = default;
    /// Kills the process when it is still there.
    ~EngineProcess();
    EngineProcess(const EngineProcess &) = delete;
    EngineProcess &operator=(const EngineProcess &) = delete;

    /// Starts it, from the main thread only: the engine dies with the thread that started it.
    /// What it prints goes to standard error, shortened. @return false when it did not start.
    [[nodiscard]] bool start(const EngineCommand &command);

    /// The number of the process; 0 when none was started.
    [[nodiscard]] qint64 id() const { return m_id; }

    /// The exit code when it has ended, 128 more than the signal when one ended it.
    [[nodiscard]] std::optional<int> exitCode();

    /// The most memory that it ever had, in bytes; 0 until it has ended.
    [[nodiscard]] qint64 peakMemory() const { return m_peakMemory; }

    /// Waits until it has ended. @return false when it still runs after that time.
    [[nodiscard]] bool waitForEnd(std::chrono::milliseconds limit);

    /// Ends it at once. Callable from any thread.
    void kill();

private:
    std::mutex m_mutex; ///< no signal is sent to a number that was given back
    qint64 m_id = 0;
    std::optional<int> m_exitCode;
    qint64 m_peakMemory = 0;
    std::jthread m_log;
};

} // namespace Quorlin
