// What the report says of a connected chip beside its options: model, firmware, and the oscillator and serial lines of
// the chips that have them. Frames as in options/status_frame.h; a byte that a frame lacks counts as 0.
#pragma once

#include "options/chip_status.h"

#include "report/text.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vrk {

bool has_double_speed_bit(std::span<const std::uint8_t> power_up_frame); // see ChipStatus

// Model and firmware, and the double-speed line of the two oldest letters.
std::vector<Line> firmware_lines(const ChipStatus& status);

// What the RC oscillator ran at, in Hz.
struct RcFrequencies {
    std::int32_t last = 0; // at the last download
    std::int32_t factory = 0;
};
RcFrequencies rc_frequencies(std::span<const std::uint8_t> power_up_frame);

// Chinese only. Nothing is said of a chip that has a figure below 2 MHz.
std::vector<Line> rc_frequency_lines(std::int32_t last_hz, std::int32_t factory_hz, bool after_download);

// The factory serial number in the answer to the erase frame: 14 hexadecimal digits.
std::string serial_digits(std::span<const std::uint8_t> erase_answer);
Line serial_line(const std::string& digits); // Chinese only

// Four bytes from an index on, the highest first.
std::int32_t big_endian_32(std::span<const std::uint8_t> bytes, std::size_t at);

} // namespace vrk
