#include "options/status_frame.h"

#include "platform/text_number.h"

#include <array>
#include <cstddef>

namespace vrk {

namespace {

constexpr std::size_t old_options_index = 22; // power-up frame, letters up to C: the whole option state
constexpr std::size_t window_index = 26; // power-up frame, letters from D on
constexpr std::size_t extended_window_index = 32; // letters D to H with the newer order
constexpr std::size_t answer_options_index = 12; // answer: the window; up to C the one option byte

// Which row each byte of a window fills, in the order of the bytes.
constexpr std::array<std::size_t, 6> rows_of_window = {0, 1, 2, 3, 8, 9};
constexpr std::array<std::size_t, 5> rows_of_short_window = {2, 3, 8, 10, 11};
constexpr std::size_t short_window_row_0 = 5; // byte of it that letter H keeps row 0 in

bool has_extended_layout(const std::string& letter, const std::string& version)
{
    return Option_Orde(letter, version) > 0 || (letter == "H" && version_times_ten(version) >= 58);
}

} // namespace

std::string decode_version(std::uint8_t byte)
{
    if (byte == 0)
        return {};
    const std::string digits = hex_text(byte, 2);
    return digits.substr(0, 1) + "." + digits.substr(1);
}

int version_times_ten(const std::string& version) { return static_cast<int>(number_in(version) * 10 + 0.5); }

int Option_Orde(const std::string& letter, const std::string& version)
{
    const int value = version_times_ten(version);
    const bool newer_order =
        ((letter == "D" || letter == "E" || letter == "F") && value >= 55) || (letter == "G" && value > 57);
    return newer_order ? 5 : 0;
}

ToldRows decode_status_frame(std::span<const std::uint8_t> frame, StatusLayout layout, const std::string& letter,
    const std::string& version, bool sixteen_rows, std::uint8_t option_row_16, StatusBytes& rows)
{
    const bool answer = layout == StatusLayout::answer;
    const std::size_t window = answer ? answer_options_index : window_index;
    const std::size_t extended = window + (extended_window_index - window_index);
    ToldRows told;
    const auto fill = [&](std::size_t row, std::size_t index) {
        if (index >= frame.size())
            return;
        rows[row] = frame[index];
        told.set(row);
    };

    rows[16] = option_row_16;
    if (sixteen_rows) {
        for (std::size_t row = 0; row < 16; ++row)
            fill(row, window + row);
    } else if (letter < "D") {
        fill(letter == "C" ? 1 : 0, answer ? answer_options_index : old_options_index);
    } else if (letter >= "I" || has_extended_layout(letter, version)) {
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
    return told;
}

bool enable_disp_RC_frequency(const std::string& version, std::uint8_t frame_length, int mode)
{
    return version >= "6.3" && (mode == 0 ? frame_length > 56 : frame_length >= 14);
}

} // namespace vrk
