#include "options/status_report.h"

#include "form/messages.h"
#include "options/option_report.h"
#include "options/status_frame.h"
#include "platform/text_number.h"

#include <cmath>

namespace vrk {

namespace {

constexpr std::size_t old_options_index = 22;
constexpr std::uint8_t double_speed_bit = 8; // letter A
constexpr std::size_t rc_last_index = 46;
constexpr std::size_t rc_factory_index = 50;
constexpr std::int32_t rc_least_hz = 2000000; // below it the figure is no measurement
constexpr std::size_t serial_first = 4;
constexpr std::size_t serial_last = 10;

std::int32_t big_endian_32(const std::array<std::uint8_t, LinkState::rx_size>& rx, std::size_t at)
{
    const std::uint32_t value = (static_cast<std::uint32_t>(rx[at]) << 24) | (static_cast<std::uint32_t>(rx[at + 1]) << 16)
        | (static_cast<std::uint32_t>(rx[at + 2]) << 8) | rx[at + 3];
    return static_cast<std::int32_t>(value);
}

} // namespace

void report_status(Shell& shell)
{
    const TargetFacts& target = shell.target;
    if (!target.target_name.empty())
        append_message(shell, "MCU Type is: " + target.target_name);
    append_message(shell, "MCU Firmware Version: " + target.fw_version + target.fw_letter);
    if (!shell.language_is_english)
        append_message(shell, "Chinese:MCU 固件版本号: " + target.fw_version + target.fw_letter);

    if (target.fw_letter == "A") {
        const bool doubled = (shell.link.rx_buffer[old_options_index] & double_speed_bit) != 0;
        append_message(shell, doubled ? "Double speed: Yes" : "Double speed: No");
    } else if (target.fw_letter == "B") {
        append_message(shell, "Double speed: Unknown");
    }
    if (enable_disp_RC_frequency(shell, 0))
        report_rc_frequency(shell, false);
    report_old_firmware(shell);
    report_options(shell);
}

void report_rc_frequency(Shell& shell, bool after_download)
{
    RcTest& rc = shell.rc;
    if (!after_download) {
        rc.rc_last = big_endian_32(shell.link.rx_buffer, rc_last_index);
        rc.rc_factory = big_endian_32(shell.link.rx_buffer, rc_factory_index);
    }
    if (rc.rc_last < rc_least_hz || rc.rc_factory < rc_least_hz || shell.language_is_english)
        return;
    const double error
        = std::floor((static_cast<double>(rc.rc_last) - rc.rc_factory) * 10000 / rc.rc_factory) / 100;
    const std::string run = after_download ? "本次使用" : "上次使用";
    append_message(shell, "");
    append_message(shell, "出厂 RC 振荡器频率: " + number_text(rc.rc_factory / 1000000.0) + "MHz.");
    append_message(shell, run + " RC 振荡器下载时的频率: " + number_text(rc.rc_last / 1000000.0) + "MHz.");
    append_message(shell, run + " RC 振荡器下载时的频率误差: " + number_text(error) + "%");
    append_message(shell, "");
}

void report_serial(Shell& shell)
{
    std::string digits;
    for (std::size_t i = serial_first; i <= serial_last; ++i)
        digits += hex_text(shell.link.rx_buffer[i], 2);
    shell.target.serial_number = digits;
    if (!shell.language_is_english)
        append_message(shell, "MCU 出厂序列号: " + digits);
}

} // namespace vrk
