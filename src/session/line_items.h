// The bauds that can be chosen, fastest first.
#pragma once

#include <cstdint>

namespace vrk {

// At which a target may be worked on.
inline constexpr std::int32_t max_bauds[] = {
    115200, 57600, 38400, 28800, 19200, 14400, 12800, 11520, 9600, 4800, 2400, 1200};
// At which it is called.
inline constexpr std::int32_t contact_bauds[] = {115200, 57600, 38400, 28800, 19200, 14400, 9600, 4800, 2400, 1200};

} // namespace vrk
