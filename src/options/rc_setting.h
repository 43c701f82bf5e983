// The setting of the internal RC oscillator: the items of its lists, and the option bytes that it goes into.
#pragma once

#include "options/option_bytes.h"

#include "catalog/mcu_record.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

// Items of the lists, in their order.
std::vector<std::string> rc_wanted_items(); // MHz
std::vector<std::string> rc_band_items(); // MHz
std::vector<std::string> rc_trim_items(); // only the place counts
std::vector<std::string> rc_divider_items(); // only the place counts
std::vector<std::string> rc_voltage_items(); // before a model is chosen
std::vector<std::string> rc_test_items(); // MHz that the RC test aims at
// Volts of the low-voltage detector, by the supply of the model; nothing where its family has none.
std::vector<std::string> low_voltage_items(const McuRecord& record);

// What may be typed in place of an item, MHz. The lists end well inside of it: whether a chip can be trimmed to a
// frequency is for the measurement to tell, but no oscillator is aimed at one beyond.
constexpr double rc_least_mhz = 1;
constexpr double rc_most_mhz = 100;

int rc_divider_of_band(int band); // places in the lists; no band chosen (-1) counts as the lowest

// What is chosen, as places in the lists; -1: nothing.
struct RcChoice {
    int band = -1;
    int trim = -1;
    int low_voltage = -1;
    std::uint8_t wanted = 0; // the number that goes into byte 4
};
std::uint8_t rc_wanted_byte(std::string_view text); // the number in a text, rounded and held to a byte; 0 for no number

// The fields of the series, into column 0. No field in most families.
void write_rc_bytes(OptionImage& image, std::int32_t series, const RcChoice& choice);

} // namespace vrk
