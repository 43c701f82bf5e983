#include "options/status_frame.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"

namespace vrk {

namespace {

constexpr std::size_t old_options_index = 22; // power-up frame, letters up to C: the whole option state
constexpr std::size_t window_index = 26; // power-up frame, letters from D on
constexpr std::size_t extended_window_index = 32; // letters D to H with the newer order
constexpr std::size_t answer_options_index = 12; // answer: the window; up to C the one option byte

// Which row each byte of a window fills, in the order of the bytes.
constexpr std::array<int, 6> rows_of_window = {0, 1, 2, 3, 8, 9};
constexpr std::array<int, 5> rows_of_short_window = {2, 3, 8, 10, 11};
constexpr std::size_t short_window_row_0 = 5; // byte of it that letter H keeps row 0 in

bool has_extended_layout(const TargetFacts& target)
{
    return Option_Orde(target.fw_letter, target.fw_version) > 0
        || (target.fw_letter == "H" && version_times_ten(target.fw_version) >= 58);
}

} // namespace

std::string decode_version(std::uint8_t byte)
{
    if (byte == 0)
        return {};
    const std::string digits = hex_text(byte, 2);
    return digits.substr(0, 1) + "." + digits.substr(1);
}

int version_times_ten(const std::string& version)
{
    return static_cast<int>(number_in(version) * 10 + 0.5);
}

int Option_Orde(const std::string& letter, const std::string& version)
{
    const int value = version_times_ten(version);
    const bool newer_order
        = ((letter == "D" || letter == "E" || letter == "F") && value >= 55) || (letter == "G" && value > 57);
    return newer_order ? 5 : 0;
}

void decode_status_frame(Shell& shell, StatusLayout layout)
{
    const auto& rx = shell.link.rx_buffer;
    auto& rows = shell.options.status_bytes;
    const TargetFacts& target = shell.target;
    const std::string& letter = target.fw_letter;
    const bool answer = layout == StatusLayout::answer;
    const std::size_t window = answer ? answer_options_index : window_index;
    const std::size_t extended = window + (extended_window_index - window_index);
    const std::size_t present_end = rx[2] < 2U ? 0U : rx[2] - 2U; // check and end byte are no fields
    const auto fill = [&](int row, std::size_t index) {
        if (index < present_end)
            rows[row] = rx[index];
    };

    rows[16] = shell.options.option_bytes[16][0];
    if (target.identified && option_family(shell.connected.series) == 4) {
        for (int row = 0; row < 16; ++row)
            fill(row, window + static_cast<std::size_t>(row));
    } else if (letter < "D") {
        fill(letter == "C" ? 1 : 0, answer ? answer_options_index : old_options_index);
    } else if (letter >= "I" || has_extended_layout(target)) {
        const std::size_t first = letter >= "I" ? window : extended;
        for (std::size_t i = 0; i < rows_of_window.size(); ++i)
            fill(rows_of_window[i], first + i);
    } else {
        for (std::size_t i = 0; i < rows_of_short_window.size(); ++i)
            fill(rows_of_short_window[i], window + i);
        if (letter == "H")
            fill(0, window + short_window_row_0);
        else
            rows[0] = 255;
    }
}

bool enable_disp_RC_frequency(const Shell& shell, int mode)
{
    const std::uint8_t length = shell.link.rx_buffer[2];
    return shell.target.fw_version >= "6.3" && (mode == 0 ? length > 56 : length >= 14);
}

} // namespace vrk
