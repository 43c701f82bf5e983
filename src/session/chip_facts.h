// What is known of the connected chip. Held by Session as `chip`, and as `rc` of its oscillator.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vrk {

struct ChipFacts {
    bool target_ok = false; // connected, and the model is the one selected
    bool tl_mode_active = false; // connected at a fixed 115200 without parity
    std::string target_name; // model found by the chip's id; empty: not in the catalogue
    std::string target_id_hi; // two hexadecimal digits each
    std::string target_id_lo;
    std::string target_id_alt; // four digits of the second id, where the chip sends one

    std::string fw_version; // "6.3"; empty for version 0.0
    std::string fw_letter; // stepping of the boot loader, "A" to "Z"; tells the family
    float mcu_clock_hz = 0;
    float mcu_clock_saved = 0; // for the option frames
    std::uint8_t clock_doubled_flag = 0; // bit 5 of the flags byte
    bool double_speed_on = false; // runs at 6 clocks a machine cycle
    bool boot_size_known = false;
    std::int16_t boot_size = 0; // bytes of the boot block: 0, 0x400, 0x600, 0x800, 0xA00

    bool status_has_options = false; // the status frame was long enough to hold them
    bool options_read_ok = false; // the option bytes of the chip are in hand

    std::int16_t reload_hi = 0; // confirmed baud reload for the present speed
    std::int16_t reload_lo = 0;
    std::int16_t reload2_hi = 0; // the same baud at the other speed
    std::int16_t reload2_lo = 0;
    float baud_error = 0; // percent, of the chosen baud

    std::string serial_number; // factory serial number, hexadecimal; empty where the chip sends none
};

// One measured point of the RC oscillator.
struct RcPoint {
    std::uint8_t band = 0;
    std::uint8_t trim = 0;
    double hz = 0;
};

// The RC test of the two RC families.
struct RcTest {
    std::array<std::uint8_t, 6> rc_saved{}; // bytes 54 to 59 of the status frame
    std::vector<RcPoint> points;
    std::int32_t rc_target = 0; // Hz aimed at
    std::uint8_t rc_band_low = 0;
    std::uint8_t rc_band_high = 0;
    double rc_gap_low = 0; // Hz; the gap between the bands, 0 where there is none
    double rc_gap_high = 0;
    int best = 255; // index of the best point
    std::int32_t rc_trim = 0;
    std::int32_t rc_error = 0; // hundredths of a percent
    std::int32_t rc_last = 0; // Hz, last measured
    std::int32_t rc_factory = 0; // Hz, measured in the factory
    std::uint8_t last_rc_trim = 0xFF; // 0xFF: none known yet
};

} // namespace vrk
