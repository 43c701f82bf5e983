// A form timer: an interval in milliseconds, started and stopped, with one event.
#pragma once

#include "platform/event_loop.h"

namespace vrk {

class Timer {
public:
    enum class Kind { repeating, one_shot }; // a one-shot timer stops itself before its event runs

    Timer(EventLoop& loop, Kind kind, int interval_ms)
        : loop_(&loop)
        , kind_(kind)
        , interval_ms_(interval_ms)
    {
    }
    ~Timer() { stop(); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Starts, or starts anew from the full interval.
    void start();
    void start(int interval_ms)
    {
        interval_ms_ = interval_ms;
        start();
    }
    void stop();
    bool enabled() const { return call_ != 0; }
    int interval_ms() const { return interval_ms_; }
    void set_interval_ms(int interval_ms) { interval_ms_ = interval_ms; }

    EventLoop::Task on_tick; // may be empty: then the timer is only waited for

private:
    void fire();

    EventLoop* loop_;
    Kind kind_;
    int interval_ms_;
    EventLoop::CallId call_ = 0;
};

} // namespace vrk
