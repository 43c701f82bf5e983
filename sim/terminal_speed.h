// The settings of a terminal in their newer form, which has the speed as a plain number. Apart from everything else:
// the header that declares it does not agree with <termios.h>.
#pragma once

#include <cstdint>

namespace sim {

bool make_terminal_raw(int descriptor, std::int32_t baud);
std::int32_t terminal_speed(int descriptor); // in baud; 0 where it cannot be read

} // namespace sim
