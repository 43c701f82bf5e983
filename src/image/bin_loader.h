// A raw binary file into a buffer, byte for byte from the start address on.
#pragma once

#include <cstdint>
#include <span>

namespace vrk {

struct BinFigures {
    std::int32_t high = 0; // last address, 511 at least
    std::uint32_t checksum = 0;
};

// Stores a file from `base` on, not below 0. A file that runs past the top of the image ends the load at the first byte
// that does not fit: this byte still counts in the checksum, and `high` then lies one below the top.
BinFigures store_bin(std::span<const std::uint8_t> file, std::int32_t base, std::span<std::uint8_t> image);

} // namespace vrk
