// A status frame, decoded and reported as at power-up and as an answer:
//   0     model, low five bits; bit 5: English; bit 6: an answer; bit 7: after the erase stage too
//   1     stepping letter, any byte
//   2     version byte
//   3..   the frame from its length byte on
#include "fuzz/target.h"

#include "catalog/attributes.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"
#include "options/option_report.h"
#include "options/option_tables.h"
#include "options/status_frame.h"
#include "options/status_report.h"
#include "session/receive_state.h"

#include <algorithm>
#include <array>

namespace fuzz {

namespace {

constexpr const char* models[] = {"Alder-64", "Aspen-16", "Birch-8", "Cedar-4R", "Elm-28R", "Fir-20R", "Fir-28R",
    "Hazel-4R", "Juniper-60Q", "Juniper-8L", "Juniper-I62Q", "Larch-12V", "Maple-4S", "Oak-20V", "Pine-32", "Rowan-8",
    "Spruce-16", "Poplar-4L", "Holly-4", "Willow-12R"};

// Filled once: that takes longer than all else.
struct Tables {
    vrk::McuTable models;
    vrk::OptionTable options[2]; // Chinese, English

    Tables()
    {
        vrk::load_mcu_tables(models, false);
        vrk::load_option_tables(options[0], false);
        vrk::load_option_tables(options[1], true);
    }
    vrk::McuRecord record(const char* name) const
    {
        const auto found = vrk::locate_mcu_by_name(models, name);
        return found ? vrk::read_mcu_row(models, found->series, found->row) : vrk::McuRecord{};
    }
};
const Tables& tables()
{
    static const Tables all;
    return all;
}

std::string complaint_of(const vrk::ChipStatus& status, const std::vector<std::string>& labels)
{
    for (const std::int16_t row : status.status_bytes) {
        if (row < 0 || row > 255)
            return "an option byte of " + std::to_string(row);
    }
    for (const std::string& label : labels) {
        if (label.find('\n') != std::string::npos)
            return "a label of two lines";
    }
    return "";
}

// The frame without a buffer behind it: a length that promises more than there is must not be believed.
void read_as_it_ends(Input input, const vrk::ChipStatus& status)
{
    for (const bool sixteen_rows : {false, true}) {
        vrk::StatusBytes rows{};
        vrk::decode_status_frame(
            input, vrk::StatusLayout::power_up, status.fw_letter, status.fw_version, sixteen_rows, 0xFF, rows);
    }
    const vrk::RcFrequencies rc = vrk::rc_frequencies(input);
    vrk::rc_frequency_lines(rc.last, rc.factory, true);
    vrk::serial_digits(input);
    vrk::has_double_speed_bit(input);
}

} // namespace

std::string fuzz_status_frame(Input input)
{
    const std::uint8_t how = take_byte(input);
    const bool english = (how & 32) != 0;
    vrk::OptionTable table = tables().options[english ? 1 : 0];
    vrk::ChipStatus status;
    status.model = tables().record(models[(how & 31U) % std::size(models)]);
    status.target_name = status.model.mcu_name;
    status.fw_letter = std::string(1, static_cast<char>(take_byte(input)));
    status.fw_version = vrk::decode_version(take_byte(input));

    std::array<std::uint8_t, vrk::ReceiveState::buffer_size> frame{0x68};
    std::copy_n(input.begin(), std::min(input.size(), frame.size() - 2), frame.begin() + 2);
    const bool sixteen_rows = vrk::option_family(status.model.series) == 4;
    vrk::decode_status_frame(frame, (how & 64) != 0 ? vrk::StatusLayout::answer : vrk::StatusLayout::power_up,
        status.fw_letter, status.fw_version, sixteen_rows, 0xFF, status.status_bytes);
    status.double_speed_bit = vrk::has_double_speed_bit(frame);
    vrk::firmware_lines(status);
    const vrk::RcFrequencies rc = vrk::rc_frequencies(frame);
    vrk::rc_frequency_lines(rc.last, rc.factory, false);
    const std::vector<std::string> lines = vrk::option_lines(table, status, english);
    if ((how & 128) != 0) {
        vrk::serial_digits(frame);
        read_as_it_ends(input, status);
    }
    return complaint_of(status, vrk::check_page_lines(status, lines, english));
}

} // namespace fuzz
