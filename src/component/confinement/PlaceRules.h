#pragma once

#include "component/confinement/Boundaries.h"

namespace Quorlin {

/// The files that a program with these boundaries may reach, as rules of the kernel. One source
/// per system stands beside this header.
class PlaceRules
{
public:
    explicit PlaceRules(const Boundaries &boundaries);
    ~PlaceRules();
    PlaceRules(const PlaceRules &) = delete;
    PlaceRules &operator=(const PlaceRules &) = delete;

    /// The version of the kernel's rules; 0 when it has none.
    [[nodiscard]] static int version();

    /// Whether the kernel keeps signals and abstract sockets inside, too.
    [[nodiscard]] static bool scopesSignals();

    /// Puts the rules on the calling thread and on what it starts from now on; cannot be taken
    /// back. Safe between fork and exec. @return false when the kernel refused.
    [[nodiscard]] bool apply() const noexcept;

private:
    void allow(const QString &path, unsigned long long rights);
    void allowProgram(const QString &path);

    int m_rules = -1; ///< descriptor; -1 without rules
};

} // namespace Quorlin
