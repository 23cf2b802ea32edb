#pragma once

namespace Quorlin {

/// How long one document may take in one stage, in milliseconds.
struct Limits
{
    int startMs = 60'000;  ///< a worker's start, until it greets
    int stallMs = 60'000;  ///< without any sign of progress
    int totalMs = 600'000; ///< altogether
};

} // namespace Quorlin
