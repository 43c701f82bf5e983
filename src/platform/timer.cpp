#include "platform/timer.h"

namespace vrk {

void Timer::start()
{
    stop();
    call_ = loop_->call_at(loop_->now_us() + std::int64_t{interval_ms_} * 1000, [this] { fire(); });
}

void Timer::stop()
{
    if (call_ != 0)
        loop_->cancel(call_);
    call_ = 0;
}

void Timer::fire()
{
    call_ = 0;
    if (kind_ == Kind::repeating)
        start(); // first, so that the event can stop it
    if (on_tick) {
        const EventLoop::Task event = on_tick; // a copy: the event may replace it
        event();
    }
}

} // namespace vrk
