// The chip's side of the baud negotiation: frame 8F tries a speed for one answer, 8E makes it last.
#include "sim/chip.h"

#include "sim/chip_clock.h"
#include "sim/hex_text.h"

#include <algorithm>

namespace sim {

namespace {

// Indices in frames 8E and 8F
constexpr std::size_t mode_or_high = 6;
constexpr std::size_t low = 7;
constexpr std::size_t complement = 8;
constexpr std::size_t doubled = 9;
constexpr std::size_t pause = 10;
constexpr std::size_t wait_states = 11; // 8F only

// Least pause, in steps, by the speed of the call. The tool needs that long to let its bytes out and to turn its port
// to the new speed; at 1200 baud series 1 is asked for a little more before it switches for good.
struct PauseFloor {
    std::int32_t baud;
    int series_1_test;
    int series_1_set;
    int others;
};
// clang-format off
constexpr PauseFloor pause_floors[] = {
//    baud  s.1 8F  s.1 8E  others
    {  9600,   255,    255,   120 },
    {  4800,   255,    255,    80 },
    {  2400,   140,    140,    45 },
    {  1200,    80,     90,    40 },
};
constexpr PauseFloor pause_floor_else = { 0, 255, 255, 200 };

struct WaitStates { double below_mhz; std::uint8_t code; }; // of the whole megahertz
constexpr WaitStates waits_series_1[] = { { 5, 0x83 }, { 15, 0x82 }, { 30, 0x81 }, { 1e9, 0x80 } };
constexpr WaitStates waits_older[]    = { { 6, 0x83 }, { 11, 0x82 }, { 20, 0x81 }, { 1e9, 0x80 } };
constexpr WaitStates waits_newer[]    = { { 2, 0x87 }, { 3, 0x86 }, { 4, 0x85 }, { 7, 0x84 }, { 13, 0x83 },
                                          { 21, 0x82 }, { 25, 0x81 }, { 1e9, 0x80 } };
// clang-format on

constexpr double doubling_from_hz = 68e6;
// The tool knows the clock as it was counted; at a limit it may stand on the other side of it.
constexpr double clock_tolerance = 0.01;

std::uint8_t wait_code(int series, double clock_hz)
{
    std::span<const WaitStates> table = waits_newer;
    if (series == 1)
        table = waits_series_1;
    else if (series == 2 || in_rc_group(series))
        table = waits_older;
    const auto found = std::find_if(
        table.begin(), table.end(), [clock_hz](const WaitStates& row) { return clock_hz / 1e6 < row.below_mhz; });
    return found->code;
}

int pause_floor(int series, std::int32_t handshake_baud, bool test)
{
    PauseFloor floor = pause_floor_else;
    for (const PauseFloor& row : pause_floors)
        if (row.baud == handshake_baud)
            floor = row;
    return series != 1 ? floor.others : test ? floor.series_1_test : floor.series_1_set;
}

std::uint16_t reload_of(const CommandFrame& frame)
{
    return static_cast<std::uint16_t>(frame.at(mode_or_high) << 8U | frame.at(low));
}

} // namespace

vrk::LineSettings Chip::offered_line(const CommandFrame& frame) const
{
    vrk::LineSettings line = line_;
    line.baud =
        generated_baud(is_newer(setup_.model.series), counting_clock_hz(setup_), frame.at(mode_or_high), frame.at(low));
    return line;
}

bool Chip::check_pause(const CommandFrame& frame)
{
    const int found = frame.at(pause);
    if (fixed_speed_)
        return found >= 2 ||
            complain("frame " + hex(frame.code(), 2) + ": pause " + std::to_string(found) +
                " at the fixed speed, wanted 2 or more");
    const int floor = pause_floor(setup_.model.series, handshake_baud_, frame.code() == 0x8F);
    const double clock = frame.code() == 0x8F ? setup_.crystal_hz : counting_clock_hz(setup_);
    const bool may_be_plain = clock * (1 - clock_tolerance) <= doubling_from_hz;
    const bool may_be_doubled = clock * (1 + clock_tolerance) > doubling_from_hz;
    if ((may_be_plain && found == floor) || (may_be_doubled && found == std::min(2 * floor, 255)))
        return true;
    return complain("frame " + hex(frame.code(), 2) + ": pause " + std::to_string(found) + " after a call at " +
        std::to_string(handshake_baud_) + " baud, wanted " + std::to_string(floor));
}

bool Chip::check_wait_states(const CommandFrame& frame)
{
    const double crystal = setup_.crystal_hz;
    const std::uint8_t slowest = wait_code(setup_.model.series, crystal * (1 - clock_tolerance));
    const std::uint8_t fastest = wait_code(setup_.model.series, crystal * (1 + clock_tolerance));
    const std::uint8_t found = frame.at(wait_states);
    if (found >= fastest && found <= slowest)
        return true;
    return complain("frame 8F: wait states " + hex(found, 2) + " for a clock of " +
        std::to_string(static_cast<long>(crystal)) + " Hz, wanted " + hex(fastest, 2));
}

// ceiling: the byte that repeats the low reload in doubled form cannot be above it.
bool Chip::check_speed(const CommandFrame& frame, int ceiling)
{
    const int twice = (256 - frame.at(low)) * 2;
    bool good = want(frame, complement, static_cast<std::uint8_t>(0xFF - frame.at(mode_or_high)), "complement");
    good &= want(frame, doubled, static_cast<std::uint8_t>(std::min(twice, ceiling)), "doubled reload");
    good &= check_pause(frame);
    if (frame.code() == 0x8F)
        good &= check_wait_states(frame);
    if (fixed_speed_)
        return good & want(frame, mode_or_high, 0, "fixed speed") & want(frame, low, 0, "fixed speed");
    const std::int32_t baud = offered_line(frame).baud;
    if (baud < 1100 || baud > 125'000)
        return complain("frame " + hex(frame.code(), 2) + ": reload " + hex(reload_of(frame), 4) + " gives " +
            std::to_string(baud) + " baud, wanted 1200 to 115200");
    return good;
}

void Chip::take_test_speed(const CommandFrame& frame)
{
    if (!check_speed(frame, 0xFE))
        return;
    const std::uint8_t next = setup_.model.new_protocol ? 0x8E : 0x8F;
    const std::int64_t pause_us = frame.at(pause) * setup_.pause_unit_us;
    if (fixed_speed_) {
        answer(next, {}, 0, [this] { enter(State::speed_set); });
        return;
    }
    const vrk::LineSettings before = line_;
    const vrk::LineSettings tried = offered_line(frame);
    tested_reload_ = reload_of(frame);
    busy_ = true;
    later(pause_us * 1000, [this, next, before, tried] {
        set_line(tried, false);
        answer(next, {}, 0, [this, before] { set_line(before, false); });
    });
}

void Chip::take_set_speed(const CommandFrame& frame)
{
    if (!check_speed(frame, 0xFF))
        return;
    if (tested_reload_ != reload_of(frame)) {
        complain("frame 8E: reload " + hex(reload_of(frame), 4) + " was not tried by frame 8F before");
        return;
    }
    const vrk::LineSettings line = offered_line(frame);
    busy_ = true;
    later(frame.at(pause) * setup_.pause_unit_us * 1000, [this, line] {
        set_line(line, false);
        answer(setup_.model.new_protocol ? 0x84 : 0x8E, {}, 0, [this] { enter(State::speed_set); });
    });
}

} // namespace sim
