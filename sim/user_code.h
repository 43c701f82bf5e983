// A chip that runs user code: it listens on a line of its own for a command, waits a second after it and resets itself
// into what comes then, its boot loader or a downloader that is linked into it.
#pragma once

#include "sim/target.h"

#include <cstdint>
#include <vector>

namespace sim {

class UserCode final : public Target {
public:
    // `next` takes the line over when the command has come; it has no power until then.
    UserCode(Target& next, const vrk::LineSettings& line, std::vector<std::uint8_t> command)
        : next_(next)
        , line_(line)
        , command_(std::move(command))
    {
    }

    // Target
    void connect(Surroundings& surroundings) override;
    void receive(const Arrival& arrival) override;
    vrk::LineSettings line() const override { return jumped_ ? next_.line() : line_; }
    void power(bool on) override;

    // What came next has ended: a reset, and the user code runs again.
    void run_again();

    bool jumped() const { return jumped_; }
    int commands_heard() const { return commands_heard_; }
    const std::vector<std::uint8_t>& heard() const { return heard_; } // since the last command, or power-up
    std::int64_t delay_ms = 1000; // so that the tool's port has changed its line by then

private:
    Target& next_;
    vrk::LineSettings line_;
    std::vector<std::uint8_t> command_;
    Surroundings* surroundings_ = nullptr;
    std::vector<std::uint8_t> heard_;
    bool powered_ = false;
    bool waiting_ = false;
    bool jumped_ = false;
    int commands_heard_ = 0;
    std::uint64_t epoch_ = 0;
};

} // namespace sim
