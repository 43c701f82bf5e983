// The far end of a wire: a chip, a programmer board, a user program, a monitor. What it may use of its surroundings is
// a transmitter, a clock and an alarm.
#pragma once

#include "platform/serial_port.h"

#include <cstdint>
#include <functional>
#include <span>

namespace sim {

// One byte as the listener's UART has it.
struct Arrival {
    std::uint8_t value = 0;
    bool parity_error = false;
    bool framing_error = false; // no stop bit where one should be
    bool tampered = false; // a fault was injected at or just before this byte; for the judge, not for the target's act
    vrk::LineSettings sampled_as; // a target that measures finds the sender's own settings here
};

class Surroundings {
public:
    virtual ~Surroundings() = default;
    virtual std::int64_t now_ns() const = 0; // on a late loop: the time of the event on the wire, not of the clock
    // Sends with the line in force and returns when the transmitter is free again.
    virtual std::int64_t send(std::span<const std::uint8_t> bytes) = 0;
    virtual void stop_sending() = 0; // power is gone: the byte on the wire breaks off
    virtual void set_line(const vrk::LineSettings& line, bool measures_speed) = 0;
    virtual void stop_listening() = 0;
    virtual void call_at(std::int64_t at_ns, std::function<void()> task) = 0;
};

class Target {
public:
    virtual ~Target() = default;
    // Called once, before all else; the surroundings live as long as the target is used.
    virtual void connect(Surroundings& surroundings) = 0;
    virtual void receive(const Arrival& arrival) = 0;
    virtual vrk::LineSettings line() const = 0; // what it sends and listens with at present
    virtual void power(bool on) = 0;
};

} // namespace sim
