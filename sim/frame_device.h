// What all simulated devices have that hear frames and answer them: a frame in hand, a book of what they have heard and
// what was out of order, answers that come after the work. Which bytes make a frame, and what it asks for, is each
// device's own affair.
#pragma once

#include "sim/faults.h"
#include "sim/target.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace sim {

class FrameDevice : public Target {
public:
    using Bytes = std::vector<std::uint8_t>;

    // Target
    void connect(Surroundings& surroundings) override { surroundings_ = &surroundings; }
    void receive(const Arrival& arrival) override;

    // What it has seen.
    std::string violations() const; // one a line; empty if the tool did all as it should
    int frame_count(std::uint8_t code) const;
    const std::vector<Bytes>& frames() const { return frames_; } // whole; the device tells which of them it keeps
    std::function<void(std::uint8_t code)> on_frame;

    // What goes wrong.
    ReplyFaults replies;
    bool silent = false;
    std::map<std::uint8_t, int> deaf_to; // code: how many frames of it are overheard

protected:
    virtual bool listens() const { return powered_ && !busy_; }
    virtual void heard(std::uint8_t byte) = 0; // one without an error of its own

    // Begins anew: what it was in the middle of is forgotten.
    void switch_power(bool on);
    // Nothing if the power is switched meanwhile.
    void later(std::int64_t delay_ns, std::function<void()> work);
    // Books the frame in hand. False: it is overheard, or the power went as it came.
    bool takes(std::uint8_t code, bool kept);
    // It is deaf while it works. A delayed answer may still be to go out when it hears again.
    void send_after_us(std::int64_t us, const Bytes& frame);
    void complain(const std::string& what) { violations_.push_back(what); }

    Surroundings* surroundings_ = nullptr;
    Bytes frame_; // in hand, or just taken
    bool harmed_ = false; // the line has damaged it: what is wrong with it is not the tool's doing
    bool missed_a_frame_ = false; // one was harmed or overheard, ever
    bool powered_ = false;

private:
    bool busy_ = false;
    std::uint64_t epoch_ = 0; // of the power
    std::vector<std::string> violations_;
    std::map<std::uint8_t, int> counts_;
    std::vector<Bytes> frames_;
};

} // namespace sim
