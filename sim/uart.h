// The two halves of a UART on a waveform: a sender that puts queued bytes on the line at its own pace, and a listener
// that samples the line in the middle of its own bits. Nothing is said about "wrong speed" or "wrong parity" anywhere:
// whoever samples with other settings than the sender's gets what a chip would get on copper.
//
// From this follows: up to about 5 % (8 data bits without parity; 4.7 % with) another speed does no harm; beyond that
// the upper bits come out wrong, and the stop bit may be missed. Between even and odd every byte has a parity error.
// Between parity and none a byte may pass by luck, but in a run of bytes the listener falls out of step.
#pragma once

#include "sim/target.h"
#include "sim/waveform.h"

#include <deque>
#include <optional>
#include <span>

namespace sim {

class Sender {
public:
    vrk::LineSettings line;
    Waveform wave;

    // Queues the bytes with the settings in force. None starts before the time given.
    void push(std::span<const std::uint8_t> bytes, std::int64_t not_before_ns);
    void requeue_at(const vrk::LineSettings& new_line); // what waits goes out with the new settings
    void drop_queue() { queue_.clear(); }
    void break_off(std::int64_t now_ns); // the byte on the line goes no further
    void cut(std::int64_t now_ns); // drops the queue as well

    std::size_t waiting() const { return queue_.size(); } // without the byte on the line
    bool busy() const { return on_line_ || !queue_.empty(); }
    std::int64_t next_event_ns() const; // the end of the byte on the line, or the start of the next
    std::int64_t run_end_ns() const; // the end of the last byte before a pause
    bool advance(std::int64_t now_ns); // true: a new byte has gone on the line

private:
    struct Waiting {
        std::uint8_t byte;
        std::int64_t not_before_ns;
        vrk::LineSettings line;
    };
    std::deque<Waiting> queue_;
    std::optional<std::int64_t> on_line_; // until when
};

class Listener {
public:
    // Measures: samples each byte as its sender sends it, and reports with what settings that was.
    void set_line(const vrk::LineSettings& line, bool measures, std::int64_t now_ns); // drops a byte in mid-air
    void resample_as(const vrk::LineSettings& line); // the setting has changed before: no byte is dropped
    void deafen() { enabled_ = false, begun_.reset(); }

    std::int64_t next_event_ns() const; // when the byte that has begun is whole
    void look(const Waveform& wave); // is there a start edge?
    std::optional<Arrival> finish(Waveform& wave); // at next_event_ns(): the byte, or nothing for a false start

private:
    struct Begun {
        std::int64_t start_ns;
        std::int64_t bit_ns;
        vrk::LineSettings line;
    };
    vrk::LineSettings line_;
    bool measures_ = false;
    bool enabled_ = false;
    std::int64_t look_from_ns_ = 0;
    std::optional<Begun> begun_;
};

} // namespace sim
