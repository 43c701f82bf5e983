// A moment in the future that a loop waits for: it wakes the event loop when it has come.
#pragma once

#include "platform/event_loop.h"

namespace vrk {

class Deadline {
public:
    Deadline(EventLoop& loop, int ms)
        : loop_(loop)
        , call_(loop.call_at(loop.now_us() + std::int64_t{ms} * 1000, [this] { call_ = 0; }))
    {
    }
    ~Deadline()
    {
        if (call_ != 0)
            loop_.cancel(call_);
    }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    bool passed() const { return call_ == 0; }

private:
    EventLoop& loop_;
    EventLoop::CallId call_;
};

// Yields for n milliseconds, whatever happens meanwhile; 0 returns at once.
inline void wait_ms(EventLoop& loop, int n)
{
    if (n == 0)
        return;
    const Deadline end(loop, n);
    while (!end.passed())
        loop.yield();
}

} // namespace vrk
