#include "options/rc_setting.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"

#include <algorithm>
#include <iterator>

namespace vrk {

namespace {

// clang-format off
// All of the wanted frequencies end in a blank: so they are stored.
constexpr const char* wanted_mhz[] = {
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

std::vector<std::string> rc_wanted_items() { return items(wanted_mhz); }
std::vector<std::string> rc_band_items() { return items(band_mhz); }
std::vector<std::string> rc_trim_items() { return places(trims); }
std::vector<std::string> rc_divider_items() { return places(dividers); }
std::vector<std::string> rc_voltage_items() { return items(voltage_codes); }
std::vector<std::string> rc_test_items() { return items(test_mhz); }

std::vector<std::string> low_voltage_items(const McuRecord& record)
{
    if (!series_is_15_16(record.series))
        return {};
    return voltage_class(record) == VoltageClass::V5 ? items(low_voltages_5v) : items(low_voltages_3v);
}

int rc_divider_of_band(int band) { return band < first_high_band ? divider_of_low_bands : divider_of_high_bands; }

std::uint8_t rc_wanted_byte(std::string_view text)
{
    return static_cast<std::uint8_t>(std::clamp(round_half_even(number_in(text)), 0.0, 255.0));
}

void write_rc_bytes(OptionImage& image, std::int32_t series, const RcChoice& choice)
{
    auto& bytes = image.bytes;
    if (series_is_15_16_17(series)) {
        // A list without a choice counts as its first item.
        const int band = std::max(0, choice.band);
        const int trim = std::max(0, choice.trim);
        bytes[3][0] = static_cast<std::uint8_t>((band * 64 + trim) | always_set_in_byte_3);
        bytes[4][0] = choice.wanted;
    }
    if (series_is_15_16(series)) {
        const bool chosen = choice.low_voltage >= 0 && choice.low_voltage < low_voltage_places;
        const int field = chosen ? low_voltage_places - 1 - choice.low_voltage : no_low_voltage;
        bytes[1][0] = static_cast<std::uint8_t>((bytes[1][0] & 0xF8) | field);
    }
}

} // namespace vrk
