// The clock and the event loop. Everything that waits in this program waits in yield().
#pragma once

#include <cstdint>
#include <functional>

namespace vrk {

// Local wall-clock time, for the times of day in messages and for elapsed minutes.
struct WallTime {
    int year = 2000;
    int month = 1; // 1..12
    int day = 1; // 1..31
    int hour = 0; // 0..23
    int minute = 0; // 0..59
    int second = 0; // 0..59
};

// One thread, ours: tasks run only inside yield() and run_due(), in the order of their times. A task may itself
// yield, so a task can run while another one is still on the stack.
class EventLoop {
public:
    using Task = std::function<void()>;
    using CallId = std::uint64_t; // 0 is never given out

    virtual ~EventLoop() = default;

    // Monotonic time in microseconds; its zero has no meaning.
    virtual std::int64_t now_us() const = 0;
    virtual WallTime wall_time() const = 0;

    // Runs the task once, at the given time or as soon after it as a yield allows.
    virtual CallId call_at(std::int64_t at_us, Task task) = 0;
    // Takes a call back; an id that has run or is unknown is ignored.
    virtual void cancel(CallId id) = 0;

    // Runs what is due. If nothing is, asks before_sleep, and sleeps until something is and runs that.
    virtual void yield() = 0;
    // Runs what is due and never sleeps.
    virtual void run_due() = 0;

    // Called when nothing is due, before yield sleeps. True: it did something, look again before time goes on. A script
    // has its turns here; a window needs none.
    std::function<bool()> before_sleep;
};

} // namespace vrk
