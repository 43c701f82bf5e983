// The level of one wire over time: idle high, and one symbol for each byte that was sent.
#pragma once

#include "platform/serial_port.h"

#include <cstdint>
#include <deque>
#include <optional>

namespace sim {

// All times on the wire are nanoseconds: a bit at 115200 baud is 8680.6 of them.
constexpr std::int64_t bit_time_ns(std::int32_t baud) { return (1'000'000'000LL + baud / 2) / baud; }
constexpr std::int64_t byte_time_ns(const vrk::LineSettings& line)
{
    return bit_time_ns(line.baud) * vrk::bits_per_byte(line);
}

// One byte as it goes over the wire: start bit, data from the lowest bit up, parity, stop.
struct Symbol {
    std::int64_t start_ns = 0;
    std::int64_t bit_ns = 0;
    std::int64_t cut_ns = 0; // the line is high from here on: the end, or the moment in which the sender broke off
    std::uint32_t levels = 0; // bit i: the level of the i-th bit on the wire
    vrk::LineSettings line;

    int bits() const { return vrk::bits_per_byte(line); }
    std::int64_t end_ns() const { return start_ns + bit_ns * bits(); }
};

bool parity_bit(std::uint8_t data, vrk::Parity parity); // the level of the parity bit; high where there is none
Symbol make_symbol(std::uint8_t byte, const vrk::LineSettings& line, std::int64_t start_ns);

class Waveform {
public:
    void add(const Symbol& symbol) { symbols_.push_back(symbol); } // in the order of time, without overlap
    void cut(std::int64_t now_ns); // what is on the line now breaks off
    void forget_before(std::int64_t time_ns); // symbols that ended by then

    bool level(std::int64_t time_ns) const;
    // The first change from high to low at or after the time.
    std::optional<std::int64_t> falling_edge(std::int64_t from_ns) const;
    // The symbol on the line at that time, or null.
    const Symbol* symbol_at(std::int64_t time_ns) const;

private:
    std::deque<Symbol> symbols_;
};

} // namespace sim
