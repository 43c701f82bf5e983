// User programs on a microcontroller, as a terminal meets them on its line: one that repeats what it hears, one that
// talks without a pause, one that gives out its code area. Without power they hear and say nothing.
#pragma once

#include "sim/target.h"

#include <cstddef>
#include <vector>

namespace sim {

class UserProgram : public Target {
public:
    explicit UserProgram(const vrk::LineSettings& line)
        : line_(line)
    {
    }

    // Target
    void connect(Surroundings& surroundings) final;
    void receive(const Arrival& arrival) final;
    vrk::LineSettings line() const final { return line_; }
    void power(bool on) final;

    bool has_power() const { return has_power_; }
    const std::vector<std::uint8_t>& heard() const { return heard_; } // since the last power-up

protected:
    virtual void begin() = 0; // with each power-up
    virtual void hear(std::uint8_t byte) = 0; // a byte that came in whole

    std::int64_t now_ns() const { return surroundings_->now_ns(); }
    std::int64_t send(std::span<const std::uint8_t> bytes) { return surroundings_->send(bytes); }
    void call_at(std::int64_t at_ns, std::function<void()> act); // forgotten if power goes meanwhile

private:
    vrk::LineSettings line_;
    Surroundings* surroundings_ = nullptr;
    bool has_power_ = false;
    std::uint64_t power_ups_ = 0;
    std::vector<std::uint8_t> heard_;
};

class EchoProgram final : public UserProgram {
public:
    using UserProgram::UserProgram;

private:
    void begin() override { }
    void hear(std::uint8_t byte) override { send(std::span(&byte, 1)); }
};

// Numbered lines of the alphabet, from the first on with each power-up: what is lost or doubled on the way shows.
class StreamProgram final : public UserProgram {
public:
    static constexpr std::size_t line_size = 32;
    static std::uint8_t byte_at(std::uint64_t place); // of all that it will say

    // `bytes_per_second`: at most what the line carries; 0: without a pause.
    StreamProgram(const vrk::LineSettings& line, int bytes_per_second)
        : UserProgram(line)
        , bytes_per_second_(bytes_per_second)
    {
    }
    std::uint64_t sent() const { return sent_; } // bytes since the last power-up
    void stop_after(std::uint64_t bytes) { last_ = bytes; } // it falls silent there

private:
    void begin() override;
    void hear(std::uint8_t) override { }
    void send_some();

    int bytes_per_second_;
    std::uint64_t sent_ = 0;
    std::uint64_t last_ = static_cast<std::uint64_t>(-1);
    std::int64_t began_ns_ = 0;
};

// Gives out its code from address 0 on when it hears a byte, whichever; what it hears meanwhile is overheard.
class DumpProgram final : public UserProgram {
public:
    DumpProgram(const vrk::LineSettings& line, std::vector<std::uint8_t> code)
        : UserProgram(line)
        , code_(std::move(code))
    {
    }

private:
    void begin() override { busy_ = false; }
    void hear(std::uint8_t byte) override;

    std::vector<std::uint8_t> code_;
    bool busy_ = false;
};

} // namespace sim
