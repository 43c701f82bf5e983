// A serial line between the tool's end and one target. Bytes travel at the real pace of their sender's settings and
// are sampled with the listener's, both ways.
//
// The wire keeps its own time: everything on it happens at its exact nanosecond, in order, when the loop gets round to
// it. On a loop that is late (real time) all that is due is made up for in one go, with the times it should have had,
// so lateness does not add up over a download.
#pragma once

#include "platform/event_loop.h"
#include "sim/event_log.h"
#include "sim/faults.h"
#include "sim/target.h"
#include "sim/task_queue.h"
#include "sim/uart.h"

#include <functional>
#include <span>
#include <vector>

namespace sim {

class Wire final : private Surroundings {
public:
    // When the loop is to wake the wire: at each byte either way, or, for bytes to the target, only when a run of them
    // is through. The latter spares a real-time loop ten thousand wake-ups a second; the target then hears them
    // together, at the time of the last one, with the time that each should have had. Replies are few and short: their
    // bytes come one by one either way, as from a port that does not hold them back.
    enum class Waking { each_byte, each_run };

    explicit Wire(vrk::EventLoop& loop, Waking waking = Waking::each_byte);
    ~Wire() override;
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

    void attach(Target& target); // once; the target outlives the wire's use

    // Faults. Replies are what the target sends in one piece.
    ReplyFaults replies;
    ByteFaults bytes_to_tool;
    ByteFaults bytes_to_target;
    void lose_reply(int n) { replies.lose(n); }
    void damage_reply(int n, std::size_t byte_index = 6, std::uint8_t xor_with = 0x10);
    void delay_reply(int n, std::int64_t ms) { replies.delay(n, ms * 1000); }
    void duplicate_reply(int n) { replies.duplicate(n); }
    void split_reply(int n, std::size_t after_bytes, std::int64_t gap_ms);
    void noise_to_tool(std::span<const std::uint8_t> noise); // bytes out of nowhere, now
    void noise_to_target(std::span<const std::uint8_t> noise);

    EventLog* log = nullptr; // every byte that arrives, where wanted

    // The tool's end, for whoever plays it: a port of the simulated driver, or a pseudo terminal.
    std::function<void(std::span<const std::uint8_t>)> on_tool_bytes; // a batch has arrived
    std::function<void()> on_wake; // before the wire makes up for the time since it was last looked at
    std::function<void()> on_tool_open; // its port has just been opened
    bool tool_is_listening() const { return tool_listening_; }
    void tool_open(const vrk::LineSettings& line);
    enum class Closing {
        drains, // what is queued still goes out with its old settings, as a Linux tty does on close
        drops // the queue is lost, the byte on the line breaks off
    };
    void tool_close(Closing closing);
    void tool_set_line(const vrk::LineSettings& line); // breaks off the byte on the line, drops the one coming in
    void tool_line_was(const vrk::LineSettings& line); // late news of a change: nothing in flight is harmed
    void tool_write(std::span<const std::uint8_t> bytes);
    std::size_t tool_unsent();
    void tool_discard_output(); // the byte on the line is finished
    void catch_up(); // brings the wire to the loop's time

private:
    // Surroundings of the target
    std::int64_t now_ns() const override; // in the midst of events: the time of the event
    std::int64_t send(std::span<const std::uint8_t> bytes) override;
    void stop_sending() override;
    void set_line(const vrk::LineSettings& line, bool measures_speed) override;
    void stop_listening() override { target_ear_.deafen(); }
    void call_at(std::int64_t at_ns, std::function<void()> task) override { add_task(at_ns, std::move(task)); }

    void add_task(std::int64_t at_ns, std::function<void()> task);
    void woken();
    void run_until(std::int64_t end_ns);
    std::int64_t next_ns() const;
    void step();
    void hand_to_tool(Arrival arrival);
    void hand_to_target(Arrival arrival);
    void arm();

    vrk::EventLoop* loop_;
    Waking waking_;
    Target* target_ = nullptr;
    Sender to_target_;
    Sender to_tool_;
    Listener target_ear_; // hears to_target_
    Listener tool_ear_; // hears to_tool_
    TaskQueue tasks_; // of the target, in nanoseconds
    std::int64_t clock_ns_;
    std::int64_t target_free_ns_ = 0; // when the target's transmitter is through, as the target sees it
    bool running_ = false;
    bool tool_listening_ = false;
    std::vector<std::uint8_t> tool_batch_;
    vrk::EventLoop::CallId call_ = 0;
    std::int64_t call_at_us_ = 0;
};

} // namespace sim
