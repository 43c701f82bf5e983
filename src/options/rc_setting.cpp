#include "options/rc_setting.h"

#include "catalog/attributes.h"
#include "form/arm_save.h"
#include "platform/text_number.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vrk {

namespace {

// clang-format off
// The first item of the wanted frequencies is the list's own name, and all of them end in a blank: so they are stored.
constexpr const char* wanted_mhz[] = {
    "com_RC_frequency ",
    "2.4576 ",  "2.5000 ",  "3.0000 ",  "3.2768 ",  "3.5795 ",  "3.5800 ",  "3.6864 ",  "4.0000 ",  "4.0960 ",  "4.1940 ",
    "4.3320 ",  "4.4336 ",  "4.5000 ",  "4.8000 ",  "5.0000 ",  "5.7270 ",  "5.9400 ",  "6.0000 ",  "6.1440 ",  "6.4000 ",
    "7.3800 ",  "8.0000 ",  "8.1920 ",  "8.3880 ",  "8.6000 ",  "8.7190 ",  "9.0000 ",  "9.6000 ",  "10.0000 ", "10.2400 ",
    "11.0592 ", "11.1500 ", "12.0000 ", "12.2800 ", "13.5000 ", "13.5200 ", "13.5600 ", "14.3182 ", "14.7456 ", "15.0000 ",
    "15.3600 ", "16.0000 ", "16.3800 ", "16.9344 ", "17.7344 ", "18.4320 ", "20.0000 ", "22.1184 ", "23.0400 ", "24.0000 ",
    "24.5760 ", "25.0000 ", "26.6900 ", "27.0000 ", "28.2240 ", "29.4912 ", "29.4993 ", "30.0000 ",
};
// 13.5600 stands in it twice.
constexpr const char* test_mhz[] = {
    "4.8000",  "5.0000",  "5.7270",  "5.9400",  "6.0000",  "6.1440",  "6.4000",  "7.3800",  "8.0000",  "8.1920",
    "8.3880",  "8.6000",  "8.7190",  "9.0000",  "9.6000",  "10.0000", "10.2400", "11.0592", "11.1500", "12.0000",
    "12.2800", "13.5600", "13.5200", "13.5600", "14.3182", "14.7456", "15.0000", "15.3600", "16.0000", "16.3800",
    "16.9344", "17.7344", "18.4320", "20.0000", "22.1184", "23.0400", "24.0000", "24.5760", "25.0000", "26.6900",
    "27.0000", "28.2240", "29.4912", "29.4993", "30.0000", "32.0000", "32.7680", "33.0000", "35.4690", "38.0000",
    "40.0000",
};
constexpr const char* band_mhz[] = { "5.50", "11.0592", "22.1184", "33.0" };
constexpr const char* voltage_codes[] = { "10", "11", "12", "13", "14", "15" }; // before a model is chosen

constexpr const char* low_voltages_5v[] = { "4.64", "4.32", "4.05", "3.82", "3.61", "3.43", "3.28", "3.14" };
constexpr const char* low_voltages_3v[] = { "3.08", "2.82", "2.61", "2.42", "2.26", "2.12", "2.00", "1.89" };
// clang-format on

// Lists of which only the place counts: six bits of byte 3 and the dividers 0 to 4.
constexpr int trims = 64;
constexpr int dividers = 5;
constexpr int divider_of_low_bands = 3;
constexpr int divider_of_high_bands = 4;
constexpr int first_high_band = 2;

constexpr int always_set_in_byte_3 = 0x30;
constexpr int low_voltage_places = 8;
constexpr int no_low_voltage = 5; // in the field, where none is chosen

template <std::size_t Count> std::vector<std::string> items(const char* const (&list)[Count])
{
    return {std::begin(list), std::end(list)};
}

std::vector<std::string> places(int count)
{
    std::vector<std::string> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(std::to_string(i));
    return numbers;
}

} // namespace

void fill_rc_lists(Shell& shell)
{
    shell.form.com_RC_frequency[0].set_items(items(wanted_mhz));
    shell.form.com_RC_frequency[1].set_items(items(band_mhz));
    shell.form.com_RC_frequency[2].set_items(places(trims));
    shell.form.com_RC_frequency[3].set_items(places(dividers));
    shell.form.com_RC_frequency[4].set_items(items(voltage_codes));
    shell.form.com_RC_frequency[5].set_items(items(test_mhz));
}

void fill_low_voltage_list(Shell& shell, int default_index)
{
    ComboBox& list = shell.form.com_RC_frequency[4];
    list.set_items({});
    if (series_is_15_16(shell.selected.series)) {
        const bool v5 = voltage_class(shell.selected) == VoltageClass::V5;
        list.set_items(v5 ? items(low_voltages_5v) : items(low_voltages_3v));
    }
    list.choose(default_index);
}

void sync_rc_divider(Shell& shell)
{
    const bool low_band = shell.form.com_RC_frequency[1].index_chosen() < first_high_band;
    shell.form.com_RC_frequency[3].choose(low_band ? divider_of_low_bands : divider_of_high_bands);
    arm_save(shell);
}

void com_RC_frequency_Click(Shell& shell) { sync_rc_divider(shell); }

void write_rc_bytes(Shell& shell)
{
    auto& bytes = shell.options.option_bytes;
    const int series = shell.selected.series;
    if (series_is_15_16_17(series)) {
        // A list without a choice counts as its first item.
        const int band = std::max(0, shell.form.com_RC_frequency[1].index_chosen());
        const int trim = std::max(0, shell.form.com_RC_frequency[2].index_chosen());
        bytes[3][0] = static_cast<std::uint8_t>((band * 64 + trim) | always_set_in_byte_3);
        const double wanted = round_half_even(number_in(shell.form.txt_RC_frequency.text()));
        bytes[4][0] = static_cast<std::uint8_t>(std::clamp(wanted, 0.0, 255.0));
    }
    if (series_is_15_16(series)) {
        const int place = shell.form.com_RC_frequency[4].index_chosen();
        const bool chosen = place >= 0 && place < low_voltage_places;
        const int field = chosen ? low_voltage_places - 1 - place : no_low_voltage;
        bytes[1][0] = static_cast<std::uint8_t>((bytes[1][0] & 0xF8) | field);
    }
}

} // namespace vrk
