// What Qt does not ask of a serial driver.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace vrk {

// USB adapters hold short replies back for up to 16 ms unless they are asked not to. A driver that refuses is left
// alone.
void ask_for_low_latency(int descriptor);

// Returns when the last byte has left, or would have: the time that the queue takes at the speed in force.
void wait_until_sent(int descriptor);

// How many bytes the driver took at once: none is possible.
std::size_t write_now(int descriptor, std::span<const std::uint8_t> bytes);

// How many bytes of what waits were taken, none where nothing does. Nothing: the line has hung up, or its device is
// gone.
std::optional<std::size_t> read_now(int descriptor, std::span<std::uint8_t> into);

// The speed that the driver really took, baud; 0 where it does not say.
int line_speed(int descriptor);

} // namespace vrk
