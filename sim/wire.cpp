#include "sim/wire.h"

#include <algorithm>
#include <utility>

namespace sim {

Wire::Wire(vrk::EventLoop& loop, Waking waking)
    : loop_(&loop)
    , waking_(waking)
    , clock_ns_(loop.now_us() * 1000)
{
}

Wire::~Wire()
{
    if (call_ != 0)
        loop_->cancel(call_);
}

void Wire::attach(Target& target)
{
    target_ = &target;
    target.connect(*this);
    arm();
}

// ---- the target's surroundings ----

std::int64_t Wire::now_ns() const { return running_ ? clock_ns_ : std::max(clock_ns_, loop_->now_us() * 1000); }

std::int64_t Wire::send(std::span<const std::uint8_t> bytes)
{
    const std::int64_t begin = std::max(now_ns(), target_free_ns_);
    target_free_ns_ = begin + byte_time_ns(to_tool_.line) * static_cast<std::int64_t>(bytes.size());
    std::int64_t at = begin;
    for (const ReplyFaults::Piece& piece : replies.apply(bytes)) {
        at += piece.gap_us * 1000;
        to_tool_.push(piece.bytes, at);
        at += byte_time_ns(to_tool_.line) * static_cast<std::int64_t>(piece.bytes.size());
    }
    arm();
    return target_free_ns_;
}

void Wire::stop_sending()
{
    to_tool_.cut(now_ns());
    target_free_ns_ = now_ns();
}

void Wire::set_line(const vrk::LineSettings& line, bool measures_speed)
{
    to_tool_.line = line; // what was queued before keeps its own
    target_ear_.set_line(line, measures_speed, now_ns());
}

void Wire::add_task(std::int64_t at_ns, std::function<void()> task)
{
    tasks_.add(std::max(at_ns, now_ns()), std::move(task));
    arm();
}

// ---- the tool's end ----

void Wire::tool_open(const vrk::LineSettings& line)
{
    catch_up();
    to_target_.line = line; // bytes that still drain from before keep their own
    tool_ear_.set_line(line, false, clock_ns_);
    tool_listening_ = true;
    if (on_tool_open)
        on_tool_open();
}

void Wire::tool_close(Closing closing)
{
    catch_up();
    tool_ear_.deafen();
    tool_listening_ = false;
    if (closing == Closing::drops)
        to_target_.cut(clock_ns_);
    arm();
}

void Wire::tool_set_line(const vrk::LineSettings& line)
{
    catch_up();
    to_target_.requeue_at(line);
    to_target_.break_off(clock_ns_);
    tool_ear_.set_line(line, false, clock_ns_);
    arm();
}

void Wire::tool_line_was(const vrk::LineSettings& line)
{
    to_target_.line = line;
    tool_ear_.resample_as(line);
}

void Wire::tool_write(std::span<const std::uint8_t> bytes)
{
    catch_up();
    to_target_.push(bytes, clock_ns_);
    arm();
}

std::size_t Wire::tool_unsent()
{
    catch_up();
    return to_target_.waiting();
}

void Wire::tool_discard_output()
{
    catch_up();
    to_target_.drop_queue();
    arm();
}

// ---- faults ----

void Wire::damage_reply(int n, std::size_t byte_index, std::uint8_t xor_with)
{
    replies.damage(n, byte_index, xor_with);
}

void Wire::split_reply(int n, std::size_t after_bytes, std::int64_t gap_ms)
{
    replies.split(n, after_bytes, gap_ms * 1000);
}

void Wire::noise_to_tool(std::span<const std::uint8_t> noise)
{
    add_task(loop_->now_us() * 1000, [this, bytes = std::vector<std::uint8_t>(noise.begin(), noise.end())] {
        if (tool_listening_)
            tool_batch_.insert(tool_batch_.end(), bytes.begin(), bytes.end());
    });
}

void Wire::noise_to_target(std::span<const std::uint8_t> noise)
{
    add_task(loop_->now_us() * 1000, [this, bytes = std::vector<std::uint8_t>(noise.begin(), noise.end())] {
        for (const std::uint8_t byte : bytes)
            if (target_ != nullptr)
                target_->receive(Arrival{byte, false, false, true, target_->line()});
    });
}

// ---- the course of time ----

std::int64_t Wire::next_ns() const
{
    return std::min({to_target_.next_event_ns(), to_tool_.next_event_ns(), target_ear_.next_event_ns(),
        tool_ear_.next_event_ns(), tasks_.next_at()});
}

void Wire::step()
{
    if (to_target_.next_event_ns() <= clock_ns_)
        to_target_.advance(clock_ns_);
    if (to_tool_.next_event_ns() <= clock_ns_)
        to_tool_.advance(clock_ns_);
    target_ear_.look(to_target_.wave);
    tool_ear_.look(to_tool_.wave);
    if (target_ear_.next_event_ns() <= clock_ns_)
        if (const auto arrival = target_ear_.finish(to_target_.wave))
            hand_to_target(*arrival);
    if (tool_ear_.next_event_ns() <= clock_ns_)
        if (const auto arrival = tool_ear_.finish(to_tool_.wave))
            hand_to_tool(*arrival);
    if (tasks_.next_at() <= clock_ns_)
        tasks_.run_next();
}

void Wire::hand_to_target(Arrival arrival)
{
    for (int times = bytes_to_target.apply(arrival); times > 0 && target_ != nullptr; --times) {
        if (log != nullptr)
            log->add(clock_ns_, "to-target", arrival.value);
        target_->receive(arrival);
    }
}

// A byte with a parity error or without its stop bit arrives as it was sampled, unmarked: that is what a program sees
// that has not asked its driver to check.
void Wire::hand_to_tool(Arrival arrival)
{
    for (int times = bytes_to_tool.apply(arrival); times > 0; --times) {
        if (log != nullptr)
            log->add(clock_ns_, "to-tool", arrival.value);
        tool_batch_.push_back(arrival.value);
    }
}

void Wire::run_until(std::int64_t end_ns)
{
    if (running_)
        return; // somebody who watches the target asks in the middle of it
    running_ = true;
    for (std::int64_t next = next_ns(); next <= end_ns; next = next_ns()) {
        clock_ns_ = std::max(clock_ns_, next);
        step();
    }
    clock_ns_ = std::max(clock_ns_, end_ns);
    target_ear_.look(to_target_.wave);
    tool_ear_.look(to_tool_.wave);
    // With no listener at work nothing reads the old symbols again.
    to_target_.wave.forget_before(clock_ns_ - 50'000'000);
    to_tool_.wave.forget_before(clock_ns_ - 50'000'000);
    running_ = false;
    if (tool_batch_.empty())
        return;
    const std::vector<std::uint8_t> batch = std::exchange(tool_batch_, {});
    if (on_tool_bytes)
        on_tool_bytes(batch);
}

void Wire::catch_up()
{
    run_until(loop_->now_us() * 1000);
    arm();
}

void Wire::woken()
{
    call_ = 0;
    if (on_wake)
        on_wake();
    catch_up();
}

void Wire::arm()
{
    if (running_)
        return; // run_until() ends with everything settled, and then arms
    std::int64_t wake_ns = next_ns();
    if (waking_ == Waking::each_run && wake_ns != TaskQueue::never) {
        wake_ns = tasks_.next_at();
        wake_ns = std::min(wake_ns, to_target_.busy() ? to_target_.run_end_ns() : target_ear_.next_event_ns());
        wake_ns = std::min({wake_ns, to_tool_.next_event_ns(), tool_ear_.next_event_ns()});
    }
    const std::int64_t wake_us = wake_ns == TaskQueue::never ? TaskQueue::never : (wake_ns + 999) / 1000;
    if (call_ != 0 && wake_us == call_at_us_)
        return;
    if (call_ != 0)
        loop_->cancel(call_);
    call_ = wake_us == TaskQueue::never ? 0 : loop_->call_at(wake_us, [this] { woken(); });
    call_at_us_ = wake_us;
}

} // namespace sim
