// The status frame: what the boot loader tells of its chip, decoded into status_bytes and reported. Index 0 is the
// direction byte 68; byte 2 is the length, and tests on it say which fields the frame has.
#pragma once

#include "form/shell.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace vrk {

// The frame that the chip sends by itself after power-up, or its answer to the read-status command, which has the same
// fields 14 places further down from the version on.
enum class StatusLayout { power_up, answer };

// "3.6" for 0x36: the two hexadecimal digits with a point between; empty for "0.0".
std::string decode_version(std::uint8_t byte);
// Ten times the version, rounded: 5.7 gives 57.
int version_times_ten(const std::string& version);

// Order of the option bytes by firmware: 5 for the newer order, else 0.
int Option_Orde(const std::string& letter, const std::string& version);

// Fills status_bytes from the frame in rx_buffer. Which bytes exist depends on the stepping letter.
void decode_status_frame(Shell& shell, StatusLayout layout);

// True for the two frames that carry an RC report, from version 6.3 on: mode 0 the status frame, 1 the erase answer.
bool enable_disp_RC_frequency(const Shell& shell, int mode);

} // namespace vrk
