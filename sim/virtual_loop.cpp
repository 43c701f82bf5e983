#include "sim/virtual_loop.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace sim {

namespace {

constexpr std::uint64_t hopeless_yields = 1'000'000;

} // namespace

vrk::WallTime VirtualLoop::wall_time() const
{
    using namespace std::chrono;
    const sys_days day{year{start_.year} / start_.month / start_.day};
    const sys_seconds time = sys_seconds{day} + hours{start_.hour} + minutes{start_.minute} + seconds{start_.second} +
        seconds{now_us_ / 1'000'000 + wall_shift_s_};
    const sys_days today = floor<days>(time);
    const year_month_day date{today};
    const hh_mm_ss clock{time - today};
    return {int{date.year()}, static_cast<int>(unsigned{date.month()}), static_cast<int>(unsigned{date.day()}),
        static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
        static_cast<int>(clock.seconds().count())};
}

// The hook may run tasks and yield itself; it is not asked again meanwhile.
bool VirtualLoop::something_came_up()
{
    if (!before_sleep || asking_)
        return false;
    asking_ = true;
    const bool did_something = before_sleep();
    asking_ = false;
    return did_something;
}

void VirtualLoop::nothing_will_come()
{
    if (++empty_yields_ == 1 && on_exhausted)
        on_exhausted();
    if (empty_yields_ < hopeless_yields)
        return;
    std::fprintf(
        stderr, "virtual clock: a wait without end at %lld us, nothing is posted\n", static_cast<long long>(now_us_));
    std::abort();
}

void VirtualLoop::yield()
{
    if (queue_.run_due(now_us_) > 0) {
        empty_yields_ = 0;
        return;
    }
    if (something_came_up()) {
        empty_yields_ = 0;
        queue_.run_due(now_us_);
        return;
    }
    if (queue_.empty()) {
        nothing_will_come();
        return;
    }
    empty_yields_ = 0;
    if (queue_.next_at() > now_us_)
        now_us_ = queue_.next_at();
    queue_.run_due(now_us_);
}

void VirtualLoop::run_for_us(std::int64_t duration_us)
{
    bool over = false;
    const CallId end = call_at(now_us_ + duration_us, [&over] { over = true; });
    while (!over)
        yield();
    cancel(end);
}

} // namespace sim
