// The CRC of the off-line board's wire, and of the image that it keeps: 16 bits, reflected polynomial A001, start value
// FFFF, nothing inverted at the end. It stands low byte first wherever it stands.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace vrk {

// By a table of one entry a byte value: what frames and images are checked with.
std::uint16_t crc16_of(std::span<const std::uint8_t> bytes);

// By shifting bit after bit, the definition itself: what the table is held against. High byte first.
std::array<std::uint8_t, 2> crc16_by_bits(std::span<const std::uint8_t> bytes);

} // namespace vrk
