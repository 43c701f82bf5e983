#include "link/baud.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace vrk {

namespace {

constexpr std::array<std::int32_t, baud_rows> bauds = {
    1200, 2400, 4800, 9600, 11520, 12800, 14400, 19200, 28800, 38400, 57600, 115200};

struct Divider {
    double clocks; // of the chip per count of the baud timer
    std::uint8_t mode;
};
constexpr std::array<Divider, 4> newer_dividers = {{{16, 192}, {32, 64}, {32 * 6, 128}, {32 * 12, 0}}};
constexpr Divider older_divider = {32, 0};

struct Fit {
    float setting = 0;
    float error = 100;
};

// One cell group of the baud table. Cells are 32-bit floats, and the limits compare the stored values.
Fit fit_of(double clock_hz, double clocks, std::int32_t baud)
{
    const double timer_hz = clock_hz / clocks;
    Fit fit;
    fit.setting = static_cast<float>(std::floor(timer_hz / baud + 0.5));
    if (fit.setting > 0) {
        const auto real_baud = static_cast<float>(timer_hz / static_cast<double>(fit.setting));
        fit.error = static_cast<float>((static_cast<double>(real_baud) - baud) / baud * 100);
    }
    return fit;
}

bool newer_fits(const Fit& fit)
{
    return fit.error > -2.5F && fit.error < 2.5F && fit.setting > 0 && fit.setting < 256;
}

bool older_fits(const Fit& fit) { return fit.error > -3.2F && fit.error < 4.0F && fit.setting > 2; }

void take(BaudChoice& choice, std::int16_t row, const Fit& fit)
{
    choice.index = row;
    choice.baud = bauds[static_cast<std::size_t>(row)];
    choice.error = fit.error;
    choice.setting = static_cast<std::int32_t>(fit.setting);
}

struct ClockStep {
    int limit_mhz;
    bool inclusive;
    std::uint8_t code;
};

// clang-format off
// Up to this clock (MHz, whole part) the flash runs with this code; above the last limit with 0x80.
constexpr ClockStep series_1_steps[] = { {  5, false, 0x83 }, { 15, false, 0x82 }, { 30, false, 0x81 } };
constexpr ClockStep older_steps[]    = { {  5, true,  0x83 }, { 10, true,  0x82 }, { 20, false, 0x81 } };
constexpr ClockStep newer_steps[]    = { {  1, true,  0x87 }, {  2, true,  0x86 }, {  3, true,  0x85 }, {  6, true,  0x84 },
                                         { 12, true,  0x83 }, { 20, true,  0x82 }, { 24, true,  0x81 } };

constexpr std::int32_t any_other = 0;
struct ByBaud {
    std::int32_t contact_baud; // any_other: the last line
    int series_1;
    int others;
};
//                                   baud   series 1  others
constexpr ByBaud pause_floor[]   = { {9600, 255, 120}, {4800, 255,  80}, {2400, 140,  45}, {1200,  80,  40}, {any_other, 255, 200} };
constexpr ByBaud leaving_test[]  = { {9600,  20, 120}, {4800,  40, 140}, {2400,  20, 160}, {1200,  20, 220}, {any_other,  30, 150} };
constexpr ByBaud leaving_set[]   = { {9600,  20,  20}, {4800,  20,  40}, {2400,  20,  60}, {1200,  20, 120}, {any_other,  20, 120} };
// clang-format on
constexpr int pause_floor_series_1_set_1200 = 90;
constexpr double fast_clock_hz = 68000000; // above it the pause byte counts twice

std::uint8_t code_at(std::span<const ClockStep> steps, int mhz)
{
    for (const ClockStep& step : steps) {
        if (mhz < step.limit_mhz || (step.inclusive && mhz == step.limit_mhz))
            return step.code;
    }
    return 0x80;
}

int by_baud(std::span<const ByBaud> table, std::int32_t contact_baud, std::int32_t series)
{
    const ByBaud* found = &table.back();
    for (const ByBaud& row : table) {
        if (row.contact_baud == contact_baud)
            found = &row;
    }
    return series == 1 ? found->series_1 : found->others;
}

} // namespace

void calculate_baud(double clock_hz, std::int32_t series, std::int32_t max_baud, BaudChoice& choice)
{
    choice.setting = 0;
    choice.index = std::min<std::int16_t>(choice.index, baud_rows - 1);
    if (choice.index <= 0 || clock_hz <= 0)
        return;
    for (std::int16_t row = choice.index; row >= 0; --row) {
        const std::int32_t baud = bauds[static_cast<std::size_t>(row)];
        if (baud > max_baud)
            continue;
        if (!is_newer_series(series)) {
            const Fit fit = fit_of(clock_hz, older_divider.clocks, baud);
            if (older_fits(fit))
                return take(choice, row, fit);
            continue;
        }
        for (const Divider& divider : newer_dividers) {
            const Fit fit = fit_of(clock_hz, divider.clocks, baud);
            if (newer_fits(fit)) {
                choice.mode = divider.mode;
                return take(choice, row, fit);
            }
        }
    }
}

Reload reload_for(std::int32_t setting, std::uint8_t mode, bool newer)
{
    const std::int32_t reload = 65536 - setting;
    return {newer ? mode : static_cast<std::uint8_t>((reload / 256) & 0xFF), static_cast<std::uint8_t>(reload & 0xFF)};
}

SpeedPair speed_pair(std::uint16_t reload, bool double_speed_on)
{
    const std::int32_t span = 65536 - reload;
    if (double_speed_on) {
        const auto half = static_cast<std::int32_t>(round_half_even(span / 2.0));
        return {static_cast<std::uint16_t>(65536 - half), reload};
    }
    return {reload, static_cast<std::uint16_t>(65536 - span * 2)};
}

std::uint8_t wait_state_code(double clock_hz, std::int32_t series)
{
    const int mhz = static_cast<int>(clock_hz / 1000000);
    if (series == 1)
        return code_at(series_1_steps, mhz);
    if (series == 2 || series_is_rc_group(series))
        return code_at(older_steps, mhz);
    return code_at(newer_steps, mhz);
}

std::uint8_t delay_code(double clock_hz)
{
    const double squared = std::max(clock_hz * clock_hz, 1.0);
    double code = 2;
    if (clock_hz < 4000000)
        code = std::floor(180000000000000.0 / squared) + 23;
    else if (clock_hz < 14000000)
        code = std::floor(540000000000000.0 / squared) + 5;
    else if (clock_hz < 18432000)
        code = std::floor(850000000000000.0 / squared) + 2;
    else if (clock_hz < 20500000)
        code = 4;
    else if (clock_hz < 22200000)
        code = 3;
    return static_cast<std::uint8_t>(std::min(code, 255.0));
}

std::uint8_t pause_byte(
    std::int32_t baud, std::int32_t contact_baud, std::int32_t series, double clock_hz, bool for_set)
{
    int floor = by_baud(pause_floor, contact_baud, series);
    if (for_set && series == 1 && contact_baud == 1200)
        floor = pause_floor_series_1_set_1200;
    int pause = std::max(static_cast<int>(std::floor(40 - 0.002 * baud)), floor);
    if (clock_hz > fast_clock_hz)
        pause *= 2;
    return static_cast<std::uint8_t>(std::min(pause, 255));
}

int leaving_ms(std::int32_t contact_baud, std::int32_t series, bool for_set)
{
    return by_baud(
        for_set ? std::span<const ByBaud>{leaving_set} : std::span<const ByBaud>{leaving_test}, contact_baud, series);
}

} // namespace vrk
