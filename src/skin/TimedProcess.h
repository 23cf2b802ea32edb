#pragma once

#include "skin/SvgRenderer.h"

#include <QString>
#include <QStringList>

#include <chrono>

namespace Quorlin {

/// A program with its arguments and the time that it may take.
struct TimedProcess
{
    QString program;
    QStringList arguments;
    std::chrono::milliseconds limit;

    /// Runs it and returns when it has ended; when the time is over, it and all that it started
    /// are ended. Its output goes nowhere.
    /// @return true when it ended by itself with code 0.
    [[nodiscard]] bool run(Waiting waiting) const;
};

} // namespace Quorlin
