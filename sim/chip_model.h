// What a simulated chip is: its model, and how this one specimen is set up.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace sim {

// The facts of a model, plain. Addresses are inclusive; last < first means "has none".
struct ChipModel {
    std::string name;
    int series = 7;
    std::string id = "D17E"; // four hexadecimal digits; two in series 0 and 1
    std::string alt_id{}; // an older id of the same model
    std::int32_t ap_last = 0xEFFF;
    std::int32_t eeprom_first = 0xF000;
    std::int32_t eeprom_last = 0xF3FF;
    std::int32_t isp_start = 0xF400; // where the boot loader begins
    bool new_protocol = true;
    bool parity = true;
    bool parity_even = true;
    bool long_frame = true; // 16-bit checks
    bool no_option_write = false;
    bool all_flash_ap = false;
    bool no_eeprom = false;
};

constexpr bool in_rc_group(int series) { return series == 11 || series == 12 || series == 13; }
constexpr bool has_16_option_rows(int series) { return series == 15 || series == 16 || series == 17; }
constexpr bool has_rc_test(int series) { return series == 15 || series == 16; }
// Times its line by a baud generator with selectable divider; the older ones by a 16-bit reload.
constexpr bool is_newer(int series) { return series >= 3 && !in_rc_group(series); }

// How much a status frame carries: the index behind its last payload byte. The direction byte 0x68 has index 0; the
// check and the end byte follow, so the length byte is this plus 2, or plus 3 where checks have 16 bits.
enum class StatusLayout : std::uint8_t {
    brief = 22, // counts, version, letter
    old_options = 23, // and the one option byte of the oldest firmware
    short_id = 24, // and one byte of model id
    id = 25, // and the second
    flags = 26, // and the boot block's size
    options = 32, // and the option window
    extended = 38, // and the second option window
    sixteen = 42, // and sixteen option rows in the place of both windows
    rc = 54, // and the RC oscillator's last and factory frequency
    read_fault = 55, // and a flag: the chip could not read its id
    long_id = 57, // and a second model id
    pins = 60, // and the six bytes of the RC trim and pins
};

// How long the chip takes. All zero: it answers at once, as a figure for the tool's own speed needs it.
struct ChipTimes {
    std::int64_t answer_us = 300; // to read a frame and make up its mind
    std::int64_t erase_us_per_kb = 15'000;
    std::int64_t write_us_per_byte = 55;
    std::int64_t options_us = 10'000;
};

struct ChipSetup {
    ChipModel model;
    char letter = 'I';
    std::uint8_t version = 0x63; // two decimal digits: 6.3
    StatusLayout layout = StatusLayout::long_id;
    double crystal_hz = 11'059'200; // the counting clock is twice this at double speed
    std::array<std::uint8_t, 17> options{}; // rows 0 to 16
    std::array<std::uint8_t, 17> fixed_option_bits{}; // set bits: cannot be written
    std::uint8_t boot_size_code = 0; // 0 to 3: 0x400, 0x600, 0x800, 0xA00 bytes
    bool new_boot_block = false; // flags bit 7
    bool clock_doubled = false; // flags bit 5
    bool reports_alt_id = false;
    std::uint16_t long_id = 0; // 0: none
    std::array<std::uint8_t, 7> serial{0xF5, 0x10, 0xC4, 0x2A, 0x07, 0x31, 0x9B};
    std::array<std::uint8_t, 6> rc_saved{0x00, 0x00, 0x58, 0x80, 0xFF, 0xFF}; // the last trim and the pins
    std::uint32_t rc_last_hz = 11'075'000;
    std::uint32_t rc_factory_hz = 11'059'200;
    bool short_block_answers = false; // the answer to a block carries no sum
    bool pins_grounded = true; // P1.0 and P1.1, which the loader may be told to look at
    std::int64_t start_up_us = 5'000; // from power to the first instruction
    std::int64_t boot_window_us = 400'000; // how long the loader listens before it starts the user's program
    std::int64_t pause_unit_us = 3'000; // one step of the pause before the first answer at a new speed
    ChipTimes times;

    void answers_at_once() { times = {0, 0, 0, 0}; }
};

// The way the model leaves the factory, with a firmware that a present-day tool takes.
ChipSetup default_setup(const ChipModel& model);

// The clock that the loader counts with and that feeds its baud generator: the crystal, doubled at double speed.
bool at_double_speed(const ChipSetup& setup);
double counting_clock_hz(const ChipSetup& setup);

// 58 for version byte 0x58. A digit above 9 counts as its hexadecimal value.
constexpr int version_number(std::uint8_t version) { return version / 16 * 10 + version % 16; }

// The option rows come in the newer order: a second window in the status frame.
bool has_extended_options(const ChipSetup& setup);
// Erase frames are padded to 139 bytes and more.
bool wants_long_erase(const ChipSetup& setup);

} // namespace sim
