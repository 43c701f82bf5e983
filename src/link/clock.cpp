#include "link/clock.h"

#include "platform/text_number.h"

#include <array>

namespace vrk {

namespace {

struct Factor {
    std::int32_t baud;
    std::int32_t hz_per_count;
};

// clang-format off
constexpr std::array<Factor, 9> factors = {{
//    baud    Hz per count
    { 115200, 2101 },
    {  57600, 2080 },
    {  38400, 2075 },
    {  28800, 2072 },
    {  19200, 2070 },
    {  14400, 2068 },
    {   9600, 2068 },
    {   4800, 2066 },
    {   2400, 2063 },
}};
// clang-format on
constexpr std::int32_t slow_factor = 2061; // 1200 baud and any other

constexpr Text internal_clock = {"内部时钟频率:", "Internal MCU Clock:"};
constexpr Text external_clock = {"外部时钟频率:", "External MCU Clock:"};
constexpr Text unknown_clock = {"时钟频率:", "MCU Clock:"};
constexpr Text clock_unit = {"M.", "MHz."};

Line clock_line(const Text& label, double hz) { return Line{label} + number_text(hz / 1000000) + clock_unit; }

} // namespace

std::int32_t set_fquency_CA(std::int32_t contact_baud)
{
    for (const Factor& factor : factors) {
        if (factor.baud == contact_baud)
            return factor.hz_per_count;
    }
    return slow_factor;
}

std::int32_t sum_of_counts(std::span<const std::uint8_t> rx)
{
    std::int32_t sum = 0;
    for (std::size_t i = 0; i < 8; ++i)
        sum += rx[4 + 2 * i] * 256 + rx[5 + 2 * i];
    return sum;
}

float measured_clock_hz(std::int32_t sum, std::int32_t contact_baud, bool fixed_115200)
{
    if (fixed_115200)
        return static_cast<float>((sum + 145) * 500.5);
    const double multiple = round_half_even(contact_baud / 1200.0);
    const double count = round_half_even(sum * multiple / 8);
    return static_cast<float>((count + 6) * set_fquency_CA(contact_baud));
}

double set_test_RC_pa(double count, std::int32_t contact_baud) { return (count + 6) * set_fquency_CA(contact_baud); }

std::vector<Line> clock_lines(const ChipFacts& chip)
{
    const double clock_hz = static_cast<double>(chip.mcu_clock_hz) * (chip.clock_doubled_flag != 0 ? 2 : 1);
    if (chip.fw_letter == "B")
        return {clock_line(internal_clock, clock_hz)};
    if (chip.fw_letter < "D")
        return {clock_line(internal_clock, clock_hz),
            clock_line(external_clock, chip.double_speed_on ? clock_hz / 2 : clock_hz)};
    return {clock_line(unknown_clock, clock_hz)};
}

} // namespace vrk
