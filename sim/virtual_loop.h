// The virtual clock: time stands still while something runs and jumps to the next task when nothing is due. A minute
// on the bench takes milliseconds, and the same run always comes out the same.
#pragma once

#include "platform/event_loop.h"
#include "sim/event_log.h"
#include "sim/task_queue.h"

namespace sim {

class VirtualLoop final : public vrk::EventLoop {
public:
    static constexpr vrk::WallTime default_start{2024, 3, 1, 8, 0, 0};

    explicit VirtualLoop(vrk::WallTime start = default_start)
        : start_(start)
    {
    }

    std::int64_t now_us() const override { return now_us_; }
    vrk::WallTime wall_time() const override;
    CallId call_at(std::int64_t at_us, Task task) override { return queue_.add(at_us, std::move(task)); }
    void cancel(CallId id) override { queue_.cancel(id); }
    void yield() override;
    void run_due() override { queue_.run_due(now_us_); }

    // A hand, or a time server, sets the wall clock forward by so much; negative: back.
    void turn_wall_clock(std::int64_t seconds) { wall_shift_s_ += seconds; }

    // For benches: lets this much virtual time pass.
    void run_for_us(std::int64_t duration_us);
    void run_for_ms(std::int64_t duration_ms) { run_for_us(duration_ms * 1000); }

    // The last yield found nothing, now or ever: whoever waits now waits for good. A million of these in a row can
    // only be a wait loop without an end; the program then says so and aborts, since a test that hangs tells less.
    bool exhausted() const { return empty_yields_ > 0; }
    std::uint64_t empty_yields() const { return empty_yields_; } // in a row
    std::function<void()> on_exhausted; // the first of a row

    EventLog log;

private:
    bool something_came_up();
    void nothing_will_come();

    TaskQueue queue_;
    std::int64_t now_us_ = 0;
    vrk::WallTime start_;
    std::int64_t wall_shift_s_ = 0;
    std::uint64_t empty_yields_ = 0;
    bool asking_ = false;
};

} // namespace sim
