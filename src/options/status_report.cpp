#include "options/status_report.h"

#include "platform/text_number.h"

#include <cmath>

namespace vrk {

namespace {

constexpr std::size_t old_options_index = 22;
constexpr std::uint8_t double_speed_bit = 8;
constexpr std::size_t rc_last_index = 46;
constexpr std::size_t rc_factory_index = 50;
constexpr std::int32_t rc_least_hz = 2000000; // below it the figure is no measurement
constexpr std::size_t serial_first = 4;
constexpr std::size_t serial_last = 10;

std::uint8_t byte_at(std::span<const std::uint8_t> bytes, std::size_t at)
{
    return at < bytes.size() ? bytes[at] : std::uint8_t{0};
}

} // namespace

bool has_double_speed_bit(std::span<const std::uint8_t> power_up_frame)
{
    return (byte_at(power_up_frame, old_options_index) & double_speed_bit) != 0;
}

std::vector<Line> firmware_lines(const ChipStatus& status)
{
    const std::string firmware = status.fw_version + status.fw_letter;
    std::vector<Line> lines;
    if (!status.target_name.empty())
        lines.emplace_back("MCU Type is: " + status.target_name);
    lines.emplace_back("MCU Firmware Version: " + firmware);
    lines.push_back(Line::only_chinese("Chinese:MCU 固件版本号: " + firmware));
    if (status.fw_letter == "A")
        lines.emplace_back(status.double_speed_bit ? "Double speed: Yes" : "Double speed: No");
    else if (status.fw_letter == "B")
        lines.emplace_back("Double speed: Unknown");
    return lines;
}

RcFrequencies rc_frequencies(std::span<const std::uint8_t> power_up_frame)
{
    return {big_endian_32(power_up_frame, rc_last_index), big_endian_32(power_up_frame, rc_factory_index)};
}

std::vector<Line> rc_frequency_lines(std::int32_t last_hz, std::int32_t factory_hz, bool after_download)
{
    if (last_hz < rc_least_hz || factory_hz < rc_least_hz)
        return {};
    const double error = std::floor((static_cast<double>(last_hz) - factory_hz) * 10000 / factory_hz) / 100;
    const std::string run = after_download ? "本次使用" : "上次使用";
    return {Line::only_chinese(""),
        Line::only_chinese("出厂 RC 振荡器频率: " + number_text(factory_hz / 1000000.0) + "MHz."),
        Line::only_chinese(run + " RC 振荡器下载时的频率: " + number_text(last_hz / 1000000.0) + "MHz."),
        Line::only_chinese(run + " RC 振荡器下载时的频率误差: " + number_text(error) + "%"), Line::only_chinese("")};
}

std::string serial_digits(std::span<const std::uint8_t> erase_answer)
{
    std::string digits;
    for (std::size_t i = serial_first; i <= serial_last; ++i)
        digits += hex_text(byte_at(erase_answer, i), 2);
    return digits;
}

Line serial_line(const std::string& digits) { return Line::only_chinese("MCU 出厂序列号: " + digits); }

std::int32_t big_endian_32(std::span<const std::uint8_t> bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = (value << 8) | byte_at(bytes, at + i);
    return static_cast<std::int32_t>(value);
}

} // namespace vrk
