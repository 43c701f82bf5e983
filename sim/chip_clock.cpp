#include "sim/chip_clock.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

struct Calibration {
    std::int32_t baud;
    int clocks_per_count;
};

// clang-format off
constexpr Calibration calibration[] = {
//    baud  clocks
    { 115200, 2101 },
    {  57600, 2080 },
    {  38400, 2075 },
    {  28800, 2072 },
    {  19200, 2070 },
    {  14400, 2068 },
    {   9600, 2068 },
    {   4800, 2066 },
    {   2400, 2063 },
    {   1200, 2061 },
};
constexpr int clocks_at_any_other = 2061;

struct Band { double lowest_hz; double step_hz; };
constexpr Band bands[] = {
//     lowest     a step of the trim
    {  4'600'000, 18'000 },
    {  8'600'000, 32'000 },
    { 16'000'000, 60'000 },
    { 28'000'000, 70'000 },
};
constexpr double bend = 0.03;   // how much steeper the curve is at its upper end
// clang-format on

int clocks_per_count(std::int32_t baud)
{
    for (const Calibration& entry : calibration)
        if (entry.baud == baud)
            return entry.clocks_per_count;
    return clocks_at_any_other;
}

double steps_of_1200(std::int32_t baud) { return std::max(1.0, std::nearbyint(baud / 1200.0)); }

// A total as eight counts that differ by one at most.
std::array<std::uint16_t, 8> spread(double total)
{
    const auto sum = static_cast<std::int64_t>(std::clamp(std::round(total), 0.0, 8.0 * 65535));
    std::array<std::uint16_t, 8> counts{};
    for (std::size_t i = 0; i < counts.size(); ++i)
        counts[i] = static_cast<std::uint16_t>((sum + static_cast<std::int64_t>(i)) / 8);
    return counts;
}

} // namespace

std::array<std::uint16_t, 8> sync_counts(double clock_hz, std::int32_t baud)
{
    const double loops =
        std::round(clock_hz / clocks_per_count(baud) - 6); // whole before the sum is: rounded once only
    return spread(loops * 8 / steps_of_1200(baud));
}

std::array<std::uint16_t, 8> probe_counts(double clock_hz) { return spread(clock_hz / 500.5 - 145); }

std::uint16_t rc_count(double frequency_hz, std::int32_t baud)
{
    const double count = (frequency_hz / clocks_per_count(baud) - 6) / steps_of_1200(baud);
    return static_cast<std::uint16_t>(std::clamp(std::round(count), 0.0, 65535.0));
}

std::int32_t nearest_standard_baud(std::int32_t measured)
{
    for (const Calibration& entry : calibration)
        if (std::abs(measured - entry.baud) * 25 <= entry.baud)
            return entry.baud;
    return measured;
}

std::int32_t generated_baud(bool newer, double clock_hz, std::uint8_t mode_or_high, std::uint8_t low)
{
    double divider = 32;
    int steps = 65536 - (mode_or_high * 256 + low);
    if (newer) {
        steps = 256 - low;
        switch (mode_or_high) {
        case 0:
            divider = 384;
            break;
        case 64:
            divider = 32;
            break;
        case 128:
            divider = 192;
            break;
        case 192:
            divider = 16;
            break;
        default:
            return 0;
        }
    }
    return static_cast<std::int32_t>(std::lround(clock_hz / divider / steps));
}

double rc_frequency_hz(std::uint8_t band, std::uint8_t trim)
{
    const Band& curve = bands[band >> 6U];
    return curve.lowest_hz + curve.step_hz * trim * (1 + bend * trim / 255);
}

} // namespace sim
