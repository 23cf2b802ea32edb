#include "component/confinement/ResourceLimits.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace Quorlin {

namespace {

void limit(__rlimit_resource_t resource, qint64 value) noexcept
{
    if (value <= 0)
        return;
    rlimit limits{};
    ::getrlimit(resource, &limits);
    const auto wanted = static_cast<rlim_t>(value);
    limits.rlim_max = limits.rlim_max < wanted ? limits.rlim_max : wanted;
    limits.rlim_cur = limits.rlim_cur < limits.rlim_max ? limits.rlim_cur : limits.rlim_max;
    ::setrlimit(resource, &limits);
}

/// When the machine runs out of memory, what opens documents goes first.
void volunteerToEnd() noexcept
{
    const int file = ::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return;
    (void)!::write(file, "500", 3);
    ::close(file);
}

} // namespace

void ResourceLimits::apply() const noexcept
{
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
#ifndef __SANITIZE_ADDRESS__
    // A sanitizer claims far more address space than it uses.
    limit(RLIMIT_DATA, memoryBytes);
#endif
    limit(RLIMIT_FSIZE, fileBytes);
    limit(RLIMIT_CPU, cpuSeconds);
    volunteerToEnd();
}

qint64 ResourceLimits::machineMemory()
{
    return static_cast<qint64>(::sysconf(_SC_PHYS_PAGES)) * ::sysconf(_SC_PAGESIZE);
}

} // namespace Quorlin
