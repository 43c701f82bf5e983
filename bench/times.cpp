#include "bench/times.h"

#include <sys/resource.h>

#include <ctime>

namespace bench {

namespace {

double seconds_of(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

std::int64_t now_ns()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

double wall_seconds() { return static_cast<double>(now_ns()) / 1e9; }

double processor_seconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime);
}

double share_of_core(const std::function<void()>& act)
{
    const double processor = processor_seconds();
    const double wall = wall_seconds();
    act();
    return (processor_seconds() - processor) / (wall_seconds() - wall) * 100;
}

} // namespace bench
