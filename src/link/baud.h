// The baud arithmetic: which divisor of the chip's clock gives the fastest baud that both ends can keep.
#pragma once

#include <cstdint>

namespace vrk {

constexpr std::int16_t baud_rows = 12; // 1200 to 115200
constexpr std::int16_t fastest_first = 100; // a start index above the last row means: from the top

struct BaudChoice {
    std::int16_t index = fastest_first; // in: where to start; out: the row found
    std::int32_t baud = 0;
    float error = 0; // percent
    std::uint8_t mode = 0; // which divider of the newer series; the older leave it alone
    std::int32_t setting = 0; // divisor S; 0: nothing fits
};

// Walks down from choice.index over the rows not above max_baud and takes the first that fits. An index of 0 or a
// clock of 0 gives setting 0 and leaves the rest as it was.
// Newer series (3 and up, not the RC group): f/16, f/32, f/192, f/384 in this order, error within +-2.5 %, 0 < S < 256.
// Older: f/32 only, -3.2 % < error < 4.0 %, S > 2. All limits are strict.
void calculate_baud(double clock_hz, std::int32_t series, std::int32_t max_baud, BaudChoice& choice);

// The two parameters of the baud frames. The newer series get the mode in place of the reload's high byte.
struct Reload {
    std::uint8_t p1 = 0;
    std::uint8_t p2 = 0;
};
Reload reload_for(std::int32_t setting, std::uint8_t mode, bool newer);

// The same baud at the other speed of the machine cycle, 16-bit reload values.
struct SpeedPair {
    std::uint16_t reload = 0;
    std::uint16_t reload2 = 0;
};
SpeedPair speed_pair(std::uint16_t reload, bool double_speed_on);

// Wait states that the flash needs while programming, 0x80 and up, by the clock in Hz.
std::uint8_t wait_state_code(double clock_hz, std::int32_t series);
// Delay code of a connection by probe frames, by the clock in Hz; 0..255.
std::uint8_t delay_code(double clock_hz);
// Pause that the chip makes before it answers; 0..255. `for_set`: frame 8E, which has its own figure at 1200 baud.
std::uint8_t pause_byte(
    std::int32_t baud, std::int32_t contact_baud, std::int32_t series, double clock_hz, bool for_set);
// How long the bytes of the frame need to leave, ms.
int leaving_ms(std::int32_t contact_baud, std::int32_t series, bool for_set);

} // namespace vrk
