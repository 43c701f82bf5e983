// The status frame: what the boot loader tells of its chip, decoded into status bytes. Index 0 is the direction byte
// 68; byte 2 is the length, and tests on it say which fields the frame has.
#pragma once

#include "options/option_bytes.h"

#include <cstdint>
#include <span>
#include <string>

namespace vrk {

// The frame that the chip sends by itself after power-up, or its answer to the read-status command, which has the same
// fields from the version on, 14 places earlier.
enum class StatusLayout { power_up, answer };

// "3.6" for 0x36: the two hexadecimal digits with a point between; empty for "0.0".
std::string decode_version(std::uint8_t byte);
// Ten times the version, rounded: 5.7 gives 57.
int version_times_ten(const std::string& version);

// Order of the option bytes by firmware: 5 for the newer order, else 0.
int Option_Orde(const std::string& letter, const std::string& version);

// Fills the rows that the frame has, which it returns; the others stay as they are. Which bytes exist depends on the
// stepping letter.
//   frame          without its check and its end byte, which are no fields
//   sixteen_rows   the chip is of a family that tells rows 0 to 15 whatever its letter: option_family 4
//   option_row_16  byte 16 as it is wanted; no frame tells it, so row 16 takes it
ToldRows decode_status_frame(std::span<const std::uint8_t> frame, StatusLayout layout, const std::string& letter,
    const std::string& version, bool sixteen_rows, std::uint8_t option_row_16, StatusBytes& rows);

// True for the two frames that carry an RC report, from version 6.3 on: mode 0 the status frame, 1 the erase answer.
// The length is byte 2 of the frame.
bool enable_disp_RC_frequency(const std::string& version, std::uint8_t frame_length, int mode);

} // namespace vrk
