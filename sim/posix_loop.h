// A real-time event loop on ppoll(), for programs without a window: tasks at their times, and file descriptors.
#pragma once

#include "platform/event_loop.h"
#include "sim/task_queue.h"

#include <functional>
#include <vector>

namespace sim {

class PosixLoop final : public vrk::EventLoop {
public:
    PosixLoop(); // asks the system for wake-ups to the microsecond

    std::int64_t now_us() const override;
    vrk::WallTime wall_time() const override;
    CallId call_at(std::int64_t at_us, Task task) override { return queue_.add(at_us, std::move(task)); }
    void cancel(CallId id) override { queue_.cancel(id); }
    void yield() override; // returns on a signal too
    void run_due() override;

    // Calls the watcher inside yields while the descriptor has something to read. One watcher a descriptor.
    void watch(int descriptor, Task watcher);
    void unwatch(int descriptor);

private:
    struct Watch {
        int descriptor;
        Task watcher;
    };
    std::size_t serve_descriptors(std::int64_t until_us); // how many were served

    bool something_came_up();
    bool is_near(std::int64_t at_us) const;

    TaskQueue queue_;
    std::vector<Watch> watches_;
    bool asking_ = false;
    std::int64_t wake_up_us_ = 0; // how long it takes to wake from a short sleep
};

} // namespace sim
