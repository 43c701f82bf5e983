#include "sim/posix_loop.h"

#include <algorithm>
#include <ctime>
#include <poll.h>
#include <sys/prctl.h>

namespace sim {

namespace {

// A short sleep takes a little longer than asked for, each time about the same. At 115200 baud that would show, so it
// is measured and asked for that much less.
constexpr std::int64_t nap_us = 1000;
constexpr std::int64_t most_wake_up_us = 40;

} // namespace

PosixLoop::PosixLoop()
{
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL); // the default of 50 us would show on every frame
}

std::int64_t PosixLoop::now_us() const
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1'000'000 + now.tv_nsec / 1000;
}

vrk::WallTime PosixLoop::wall_time() const
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

void PosixLoop::watch(int descriptor, Task watcher)
{
    unwatch(descriptor);
    watches_.push_back({descriptor, std::move(watcher)});
}

void PosixLoop::unwatch(int descriptor)
{
    std::erase_if(watches_, [descriptor](const Watch& watch) { return watch.descriptor == descriptor; });
}

std::size_t PosixLoop::serve_descriptors(std::int64_t until_us)
{
    std::vector<pollfd> polled;
    polled.reserve(watches_.size());
    for (const Watch& watch : watches_)
        polled.push_back({watch.descriptor, POLLIN, 0});
    const std::int64_t asked_at_us = now_us();
    const bool is_nap = until_us - asked_at_us < nap_us;
    const std::int64_t wait_us = std::max<std::int64_t>(0, until_us - asked_at_us - (is_nap ? wake_up_us_ : 0));
    const timespec wait{static_cast<std::time_t>(wait_us / 1'000'000), static_cast<long>(wait_us % 1'000'000 * 1000)};
    const bool for_ever = until_us == TaskQueue::never;
    const int ready = ppoll(polled.data(), polled.size(), for_ever ? nullptr : &wait, nullptr);
    if (ready == 0 && is_nap && wait_us > 0) {
        const std::int64_t late_us = now_us() - asked_at_us - wait_us;
        wake_up_us_ = std::clamp<std::int64_t>((7 * wake_up_us_ + late_us) / 8, 0, most_wake_up_us);
    }
    if (ready <= 0)
        return 0;
    std::size_t served = 0;
    for (const pollfd& poll : polled) {
        const auto found =
            std::find_if(watches_.begin(), watches_.end(), [&poll](const Watch& w) { return w.descriptor == poll.fd; });
        if (poll.revents == 0 || found == watches_.end())
            continue;
        const Task watcher = found->watcher; // a copy: it may unwatch itself
        watcher();
        ++served;
    }
    return served;
}

void PosixLoop::run_due()
{
    serve_descriptors(0);
    queue_.run_due(now_us());
}

bool PosixLoop::is_near(std::int64_t at_us) const { return at_us - now_us() <= most_wake_up_us; }

// The hook may run tasks and yield itself; it is not asked again meanwhile.
bool PosixLoop::something_came_up()
{
    if (!before_sleep || asking_)
        return false;
    asking_ = true;
    const bool did_something = before_sleep();
    asking_ = false;
    return did_something;
}

void PosixLoop::yield()
{
    if (queue_.run_due(now_us()) > 0)
        return;
    if (something_came_up()) {
        run_due();
        return;
    }
    // A nap ends a little before its time; what is left of it is too short to sleep.
    while (serve_descriptors(queue_.next_at()) == 0 && queue_.next_at() > now_us() && is_near(queue_.next_at())) { }
    queue_.run_due(now_us());
}

} // namespace sim
