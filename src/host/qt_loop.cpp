#include "host/qt_loop.h"

#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>

namespace vrk {

QtLoop::QtLoop()
{
    clock_.start();
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer); // sync bytes are 10 ms apart, and coarse timers come 5 % late
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
        armed_at_us_ = 0;
        run_due_calls();
        arm();
    });
}

std::int64_t QtLoop::now_us() const { return clock_.nsecsElapsed() / 1000 + 1; }

WallTime QtLoop::wall_time() const
{
    const QDateTime now = QDateTime::currentDateTime();
    return {now.date().year(), now.date().month(), now.date().day(), now.time().hour(), now.time().minute(),
        now.time().second()};
}

EventLoop::CallId QtLoop::call_at(std::int64_t at_us, Task task)
{
    const CallId id = ++last_id_;
    calls_.emplace(std::pair{at_us, id}, std::move(task));
    times_.emplace(id, at_us);
    arm();
    return id;
}

void QtLoop::cancel(CallId id)
{
    const auto found = times_.find(id);
    if (found == times_.end())
        return;
    calls_.erase({found->second, id});
    times_.erase(found);
}

void QtLoop::yield()
{
    if (run_due_calls() || (before_sleep && before_sleep()))
        return;
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void QtLoop::run_due()
{
    run_due_calls();
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

// Runs what is due at this moment; what those calls add waits for the next turn. False: nothing was due.
bool QtLoop::run_due_calls()
{
    const std::int64_t now = now_us();
    const CallId newest = last_id_;
    bool ran = false;
    for (;;) {
        const auto due =
            std::find_if(calls_.begin(), calls_.end(), [&](const auto& call) { return call.first.second <= newest; });
        if (due == calls_.end() || due->first.first > now)
            break;
        const Task task = std::move(due->second);
        times_.erase(due->first.second);
        calls_.erase(due);
        ran = true;
        task(); // may yield, and so come here again
    }
    arm();
    return ran;
}

// The timer stands at the earliest call. A call that was taken back leaves it standing: one turn for nothing costs less
// than setting it anew for each frame.
void QtLoop::arm()
{
    if (calls_.empty())
        return;
    const std::int64_t at_us = calls_.begin()->first.first;
    if (armed_at_us_ != 0 && armed_at_us_ <= at_us)
        return;
    const std::int64_t wait_us = std::max<std::int64_t>(at_us - now_us(), 0);
    timer_.start(static_cast<int>((wait_us + 999) / 1000)); // never early
    armed_at_us_ = at_us;
}

} // namespace vrk
