#pragma once

#include "component/confinement/Boundaries.h"
#include "component/confinement/CallFilter.h"
#include "component/confinement/PlaceRules.h"

#include <QString>

namespace Quorlin {

/// Keeps a program that opens documents inside its boundaries, by means that need no privileges.
///
/// Made before the process or before its first thread, entered once. A process that has entered
/// gains no privileges any more, and neither does what it starts; entering again can only make
/// the boundaries narrower. Where the kernel has no such means, entering does nothing.
class Confinement
{
public:
    explicit Confinement(const Boundaries &boundaries);

    /// Confines the calling thread and all that it starts. Safe between fork and exec.
    /// @return false when the kernel refused: the program must not go on.
    [[nodiscard]] bool enter() const noexcept;

    /// Ends a process that could not enter, between fork and exec.
    [[noreturn]] static void abandon() noexcept;

    /// Takes from this process, which has entered already, whatever was only needed to set out:
    /// all of its threads may no longer connect to sockets.
    /// @return false when the kernel refused.
    [[nodiscard]] static bool connectNoMore();

    /// What is missing here, in a sentence for the log; empty when everything is there.
    [[nodiscard]] static QString missing();

    /// Whether the environment switches confinement off (QUORLIN_SANDBOX=off), for measuring and
    /// for finding out whether it is in the way of something.
    [[nodiscard]] static bool isSwitchedOff();

private:
    bool m_active;
    PlaceRules m_places;
    CallFilter m_calls;
};

} // namespace Quorlin
