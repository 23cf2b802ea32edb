#pragma once

namespace Quorlin {

/// How long one document may take in one stage, in milliseconds, and how many of a job are worked
/// on at once.
struct Limits
{
    int startMs = 60'000;  ///< a worker's start, until it greets
    int stallMs = 60'000;  ///< without any sign of progress
    int totalMs = 600'000; ///< altogether
    int atOnce = 0;        ///< at the most; 0 leaves it to the component
};

} // namespace Quorlin
