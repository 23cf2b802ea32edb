#include "component/supervisor/Limits.h"

#include "component/confinement/ResourceLimits.h"

#include <algorithm>

namespace Quorlin {

qint64 Limits::usualMemory()
{
    constexpr qint64 GiB = qint64{1} << 30;
    static const auto usual = std::clamp(ResourceLimits::machineMemory() / 2, GiB, 4 * GiB);
    return usual;
}

} // namespace Quorlin
