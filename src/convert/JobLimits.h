#pragma once

#include <QJsonObject>

#include <chrono>

namespace Quorlin {

/// How long one document may take; zero leaves the choice to the component.
struct JobLimits
{
    std::chrono::seconds stall{0}; ///< without any progress
    std::chrono::seconds total{0}; ///< altogether

    /// The object of the pipe's language; empty when nothing is limited.
    [[nodiscard]] QJsonObject toJson() const;
};

} // namespace Quorlin
