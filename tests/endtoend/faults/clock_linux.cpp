// Loaded into programs under test, whose calls for the time come here first.
#include "clock.h"

#include <ctime>

#include <cstdlib>

#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr time_t Day = 24 * 60 * 60;

bool isSetBack()
{
    const char *const sign = std::getenv(Quorlin::ClockVariable);
    return sign && ::syscall(SYS_access, sign, F_OK) == 0;
}

bool isWallClock(clockid_t clock)
{
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    const auto result = ::syscall(SYS_clock_gettime, clock, time);
    if (result == 0 && isWallClock(clock) && isSetBack())
        time->tv_sec -= Day;
    return static_cast<int>(result);
}

int gettimeofday(timeval *__restrict time, void *__restrict zone) noexcept
{
    const auto result = ::syscall(SYS_gettimeofday, time, zone);
    if (result == 0 && isSetBack())
        time->tv_sec -= Day;
    return static_cast<int>(result);
}

time_t time(time_t *seconds) noexcept
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    if (seconds)
        *seconds = now.tv_sec;
    return now.tv_sec;
}
}
