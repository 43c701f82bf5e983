// The event loop on Qt: real time. One timer of Qt's serves all calls; a sequence that yields runs Qt's own loop.
#pragma once

#include "platform/event_loop.h"

#include <QElapsedTimer>
#include <QTimer>

#include <map>
#include <unordered_map>

namespace vrk {

class QtLoop final : public EventLoop {
public:
    QtLoop();

    std::int64_t now_us() const override;
    WallTime wall_time() const override;
    CallId call_at(std::int64_t at_us, Task task) override;
    void cancel(CallId id) override;
    void yield() override;
    void run_due() override;

private:
    bool run_due_calls();
    void arm();

    QElapsedTimer clock_;
    QTimer timer_;
    std::int64_t armed_at_us_ = 0; // 0: not armed
    CallId last_id_ = 0;
    std::map<std::pair<std::int64_t, CallId>, Task> calls_; // in the order of their times
    std::unordered_map<CallId, std::int64_t> times_;
};

} // namespace vrk
