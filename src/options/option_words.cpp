#include "options/option_words.h"

#include <algorithm>
#include <iterator>

namespace vrk {

namespace {

using namespace pairs;

// clang-format off
constexpr OptionWords words[] = {
//    pair                          option                   first        second
    { &double_speed_oldest,         "speed",                 "6t",        "12t" },
    { &double_speed,                "speed",                 "6t",        "12t" },
    { &half_or_full_gain,           "oscillator-gain",       "low",       "high" },
    { &high_or_low_gain,            "oscillator-gain",       "high",      "low" },
    { &clock_source_oldest,         "clock-source",          "internal",  "external" },
    { &clock_source,                "clock-source",          "internal",  "external" },
    { &clock_source_rc_oscillator,  "clock-source",          "internal",  "external" },
    { &download_pins_oldest,        "download-pins",         "ignored",   "grounded" },
    { &download_pins,               "download-pins",         "ignored",   "grounded" },
    { &download_pins_p3_2_p3_3,     "download-pins",         "ignored",   "grounded" },
    { &extended_ram,                "extended-ram",          "off",       "on" },
    { &erase_data_ff,               "erase-data",            "yes",       "no" },
    { &erase_data_00,               "erase-data",            "yes",       "no" },
    { &clear_data_4,                "erase-data",            "yes",       "no" },
    { &clear_data_5,                "erase-data",            "yes",       "no" },
    { &unused_code,                 "unused-code",           "00",        "ff" },
    { &ale_pin,                     "ale-pin",               "port",      "ale" },
    { &reset_pin_p4_7,              "reset-pin",             "port",      "reset" },
    { &reset_pin_p4_7_juniper,      "reset-pin",             "port",      "reset" },
    { &reset_pin_p3_6,              "reset-pin",             "port",      "reset" },
    { &reset_pin_p0_0,              "reset-pin",             "port",      "reset" },
    { &reset_delay,                 "reset-delay",           "yes",       "no" },
    { &low_voltage_resets,          "low-voltage-does",      "interrupt", "reset" },
    { &low_voltage_protects,        "low-voltage-writes",    "allowed",   "protected" },
    { &low_voltage_3_7_3_3,         "low-voltage-reset",     "high",      "low" },
    { &low_voltage_3_8_3_3,         "low-voltage-reset",     "high",      "low" },
    { &low_voltage_4_1_3_5,         "low-voltage-reset",     "high",      "low" },
    { &low_voltage_4_1_3_7,         "low-voltage-reset",     "high",      "low" },
    { &low_voltage_p1_2,            "reset2-pin",            "reset",     "port" },
    { &low_voltage_p4_6,            "reset2-pin",            "reset",     "port" },
    { &watchdog_stops,              "watchdog-stops-by",     "power-off", "reset" },
    { &watchdog_locked_4,           "watchdog-locked",       "yes",       "no" },
    { &watchdog_locked,             "watchdog-locked",       "yes",       "no" },
    { &watchdog_at_power_up_4,      "watchdog-at-power-up",  "yes",       "no" },
    { &watchdog_at_power_up,        "watchdog-at-power-up",  "yes",       "no" },
    { &watchdog_in_idle_4,          "watchdog-stops-in-idle","yes",       "no" },
    { &watchdog_in_idle,            "watchdog-stops-in-idle","yes",       "no" },
};
// clang-format on

} // namespace

std::span<const OptionWords> option_words() { return words; }

const OptionWords* words_of(const Pair& pair)
{
    const auto found = std::ranges::find(words, &pair, &OptionWords::pair);
    return found == std::end(words) ? nullptr : found;
}

} // namespace vrk
