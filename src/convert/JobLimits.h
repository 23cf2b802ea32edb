#pragma once

#include <QJsonObject>

#include <chrono>

namespace Quorlin {

/// What a job may take; zero leaves the choice to the component.
struct JobLimits
{
    std::chrono::seconds stall{0}; ///< of one document without any progress
    std::chrono::seconds total{0}; ///< of one document altogether
    int atOnce = 0;                ///< documents that are worked on at once, at the most
    int memory = 0;                ///< mebibytes that one document may need

    /// The object of the pipe's language; empty when nothing is limited.
    [[nodiscard]] QJsonObject toJson() const;
};

} // namespace Quorlin
