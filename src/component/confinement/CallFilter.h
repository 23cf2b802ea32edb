#pragma once

#include "component/confinement/Boundaries.h"

#include <QByteArray>

namespace Quorlin {

/// The system calls that a program with these boundaries is refused, as a program for the
/// kernel's filter. One source per system stands beside this header.
///
/// It is made before a process is, because making it takes memory.
class CallFilter
{
public:
    /// @param scopesSignals the file rules keep signals inside already.
    CallFilter(const Boundaries &boundaries, bool scopesSignals);

    /// Whether the kernel has such filters.
    [[nodiscard]] static bool isSupported();

    /// Puts the filter on all threads and on what they start from now on; cannot be taken
    /// back. Safe between fork and exec. @return false when the kernel refused.
    [[nodiscard]] bool apply() const noexcept;

private:
    QByteArray m_program;
};

} // namespace Quorlin
