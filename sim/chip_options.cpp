// Frame 8D: the option bytes, in the form of each series.
#include "sim/chip.h"

#include "sim/hex_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace sim {

namespace {

struct Place {
    std::size_t index; // in the frame
    std::size_t row;
};
// clang-format off
constexpr Place places_rc_group[]   = { {6, 1}, {9, 8} };                              // 7, 8: reload
constexpr Place places_newer_head[] = { {6, 2}, {7, 3}, {8, 8}, {9, 10} };             // 10: see below; 11 to 14: clock
constexpr Place places_series_18[]  = { {6, 0}, {7, 3}, {8, 4}, {9, 5}, {10, 8}, {11, 9} };
// clang-format on

constexpr std::uint8_t taken_by_older = 0x80;
constexpr std::uint8_t taken_by_newer = 0x81;
constexpr std::uint8_t not_taken_yet = 0x50;

std::size_t parameters_wanted(int series)
{
    if (series == 0)
        return 1;
    if (series == 2 || in_rc_group(series))
        return 4;
    if (series == 18)
        return 10;
    return series >= 7 ? 20 : 32;
}

} // namespace

void Chip::write_option(std::size_t row, std::uint8_t value)
{
    std::uint8_t& option = setup_.options[row];
    const std::uint8_t fixed = setup_.fixed_option_bits[row];
    option = static_cast<std::uint8_t>((option & fixed) | (value & ~fixed));
}

// The clock as the tool measured it, 32 bits.
bool Chip::check_clock(const CommandFrame& frame, std::size_t index)
{
    std::uint32_t found = 0;
    for (std::size_t i = 0; i < 4; ++i)
        found = found << 8U | frame.at(index + i);
    const double clock = counting_clock_hz(setup_);
    if (std::abs(found - clock) <= clock / 100)
        return true;
    return complain("frame 8D: clock " + std::to_string(found) + " Hz at byte " + std::to_string(index) + ", counted " +
        std::to_string(static_cast<long>(clock)) + " Hz");
}

// The reload of the speed in force, for the same or the other clock rate: half or double the steps.
bool Chip::check_reload(const CommandFrame& frame)
{
    if (!tested_reload_)
        return true;
    const int found = 65536 - (frame.at(7) * 256 + frame.at(8));
    const int in_force = 65536 - *tested_reload_;
    if (found == in_force || found == 2 * in_force || std::abs(2 * found - in_force) <= 1)
        return true;
    return complain(
        "frame 8D: reload of " + std::to_string(found) + " steps, in force are " + std::to_string(in_force));
}

void Chip::take_options(const CommandFrame& frame)
{
    const int series = setup_.model.series;
    const std::size_t wanted = parameters_wanted(series);
    if (frame.parameter_count() != wanted) {
        complain(
            "frame 8D: " + std::to_string(frame.parameter_count()) + " parameters, wanted " + std::to_string(wanted));
        return;
    }
    std::vector<Place> places;
    bool good = true;
    if (series == 0) {
        if (frame.at(6) != 0xFF) // FF is the empty word: nothing is burnt
            places.push_back({6, 0});
    } else if (series == 2 || in_rc_group(series)) {
        places.assign(std::begin(places_rc_group), std::end(places_rc_group));
        good = check_reload(frame);
    } else if (series == 18) {
        places.assign(std::begin(places_series_18), std::end(places_series_18));
        good = frame.from(12, 4)[0] == 0xFF || check_clock(frame, 12);
    } else if (series >= 7) {
        for (std::size_t row = 0; row < 16; ++row)
            places.push_back({6 + row, row});
        good = check_clock(frame, 22);
    } else {
        places.assign(std::begin(places_newer_head), std::end(places_newer_head));
        places.push_back({10, series == 6 ? 0U : 11U});
        for (const Place& place : places)
            good &= want(frame, place.index, frame.at(15 + place.row), "option row, told twice");
        good = good & check_clock(frame, 11) & check_clock(frame, 31);
        for (std::size_t index = 35; index <= 37; ++index)
            good &= want(frame, index, 0xFF, "filler");
        if (has_extended_options(setup_))
            for (std::size_t row = 0; row < 16; ++row)
                places.push_back({15 + row, row});
    }
    if (!good)
        return;
    if (faults.busy_options > 0) {
        --faults.busy_options;
        answer(not_taken_yet, {}, setup_.times.options_us);
        return;
    }
    if (faults.refused_options > 0)
        --faults.refused_options;
    else
        for (const Place& place : places)
            write_option(place.row, frame.at(place.index));
    enter(State::options_written);
    answer(series >= 7 && !in_rc_group(series) ? taken_by_newer : taken_by_older, {}, setup_.times.options_us);
}

} // namespace sim
