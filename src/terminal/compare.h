// What a target has sent of its application area, against the code that should be there.
#pragma once

#include "report/report.h"
#include "terminal/byte_ring.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace vrk {

// Byte by byte from address 0 on; the first byte received is that of address 0. Tells each difference, asks after more
// than a hundred whether to go on, and ends with the verdict. A byte that was not received is a difference. `time` is
// shown in the verdict: "hh:mm:ss".
void compare_with_code(
    const CompareRing& received, std::span<const std::uint8_t> code, std::string_view time, Report& report);

} // namespace vrk
