// Chips that have come to their final speed, ready to be erased and written.
#pragma once

#include "sim/hand_tool.h"

#include <array>
#include <numeric>

namespace sim::test {

inline Bytes ramp(std::size_t size)
{
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

struct Juniper : HandTool {
    explicit Juniper(const ChipSetup& setup = default_setup(juniper_60q()))
        : HandTool(setup)
    {
        reach_final_speed();
    }
};

// Birch-20 with its 8-bit checks and short erase frames, at 115200.
struct Birch : HandTool {
    explicit Birch(const ChipSetup& setup = default_setup(birch_20()))
        : HandTool(setup)
    {
        call_up();
        offer({0x8F, 0xFF, 0xFD, 0x00, 6, 45, 0x81});
        turn_to(2400);
        offer({0x8E, 0xFF, 0xFD, 0x00, 6, 45});
    }
    void offer(const Bytes& frame)
    {
        write(command(frame, false));
        pass_ms(100);
        turn_to(115200);
        pass_ms(900);
    }
};
inline const Bytes birch_erase{0x84, 40, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33};

} // namespace sim::test
