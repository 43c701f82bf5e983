#include "options/option_pages.h"

#include <algorithm>

namespace vrk {

namespace {

using namespace pairs;

constexpr bool first = true; // is the default
constexpr bool second = false;

constexpr Strip note(int index, Text text = {"", ""}, std::string_view key = {}, Box box = Box::none)
{
    return {index, nullptr, {}, '0', first, text, key, box};
}
constexpr Strip choice(
    int index, const Pair& pair, std::string_view bit, char first_value, bool first_is_default, Box box = Box::none)
{
    return {index, &pair, bit, first_value, first_is_default, {"", ""}, {}, box};
}

constexpr Text faster_than_12_mhz = {"", "MCU Clock >12MHz select High"};

// clang-format off

// ---- page 0: Alder ---------------------------------------------------------------------------------------------------
constexpr Strip alder[] = {
//           strip  pair                    bit  first is  default
    choice(  0, double_speed_oldest,       "013", '1', second),
};

// ---- page 2: Birch, Pine, Rowan, Spruce: everything in byte 1 -----------------------------------------------------------
constexpr Strip birch_chinese[] = {
    choice(  0, double_speed,              "010", '0', second),
    choice(  1, half_or_full_gain,         "014", '0', second),
    choice(  3, download_pins_oldest,      "012", '1', first),
    choice(  4, extended_ram,              "016", '0', second),
    choice(  5, erase_data_ff,             "013", '0', second),
    note  (  8),
    note  (  9, { "以下功能对部分单片机有效", "" }),
    choice( 10, watchdog_stops,            "017", '0', second),
    choice( 11, ale_pin,                   "015", '0', second),
};
constexpr Strip birch_english[] = { // on top of the Chinese page
    note  (  2),
    choice(  5, erase_data_00,             "013", '0', second),
};

// ---- page 4: Cedar, Elm, Fir -------------------------------------------------------------------------------------------
constexpr Strip cedar[] = {
    choice(  0, clock_source_oldest,       "021", '0', second),
    choice(  1, download_pins,             "080", '1', first),
    choice(  2, clear_data_4,              "081", '0', second),
    note  (  3),
    choice(  4, unused_code,               "160", '0', second),
    choice(  8, low_voltage_3_7_3_3,       "006", '0', first),
    note  (  9, { "MCU 时钟大于12MHz 时建议选较高复位电压", "MCU Clock >12MHz select High" }),
    choice( 10, watchdog_locked_4,         "037", '0', second),
    choice( 11, watchdog_at_power_up_4,    "035", '0', second),
    choice( 12, watchdog_in_idle_4,        "033", '0', second, Box::watchdog_divider),
};

// ---- page 5: Hazel -----------------------------------------------------------------------------------------------------
constexpr Strip hazel[] = {
    choice(  0, clock_source,              "021", '0', first),
    choice(  1, reset_delay,               "027", '0', first),
    choice(  2, high_or_low_gain,          "026", '1', first),
    choice(  3, download_pins,             "080", '1', first),
    choice(  4, clear_data_5,              "081", '0', second),
    choice(  8, low_voltage_p1_2,          "006", '0', second),
    note  (  9, { "时钟频率 >12MHz, 请选择 P1.2/RESET2 用作 RESET2", "MCU Clock >12MHz, please use P1.2/RESET2 as RESET2" }),
    choice( 10, watchdog_locked,           "037", '0', second),
    choice( 11, watchdog_at_power_up,      "035", '0', second),
    choice( 12, watchdog_in_idle,          "033", '0', first, Box::watchdog_divider),
};

// ---- page 6: Juniper, and what the later pages have in common with it ---------------------------------------------------
constexpr Strip juniper[] = {
    choice(  0, clock_source,              "011", '0', second),
    choice(  1, reset_pin_p4_7_juniper,    "000", '0', second),
    choice(  2, reset_delay,               "017", '0', first),
    choice(  3, high_or_low_gain,          "016", '1', first),
    choice(  4, download_pins,             "080", '1', first),
    choice(  5, erase_data_00,             "081", '0', second),
    choice(  8, low_voltage_p4_6,          "006", '0', second),
    note  (  9, { "时钟频率 >12MHz, 请选择 P4.6/RESET2 用作 RESET2", "MCU Clock >12MHz, please use P4.6/RESET2 as RESET2" }),
    choice( 10, watchdog_locked,           "027", '0', second),
    choice( 11, watchdog_at_power_up,      "025", '0', second),
    choice( 12, watchdog_in_idle,          "023", '0', first, Box::watchdog_divider),
};
constexpr Strip juniper_chinese[] = {
    choice(  5, erase_data_ff,             "081", '0', second),
};

// ---- page 7: Larch, Willow ---------------------------------------------------------------------------------------------
constexpr Strip larch[] = { // on top of Juniper
    choice(  1, reset_pin_p4_7,            "000", '0', second),
    choice(  8, low_voltage_3_8_3_3,       "006", '0', first),
    note  (  9, faster_than_12_mhz),
};

// ---- page 8: Maple -----------------------------------------------------------------------------------------------------
constexpr Strip maple[] = { // on top of Juniper
    choice(  0, clock_source_rc_oscillator,"011", '0', first),
    choice(  1, reset_pin_p3_6,            "000", '0', second),
    note  (  6),
    note  (  7, { "启动系统振荡器后等待时钟数(复位和掉电唤醒):", "Wait n clocks after MCU is waked up:" }, {}, Box::rc30k_divider),
    choice(  8, low_voltage_4_1_3_5,       "006", '0', first),
    note  (  9, faster_than_12_mhz),
};

// ---- page 9: Oak -------------------------------------------------------------------------------------------------------
constexpr Strip oak_english[] = { // on top of Juniper
    choice(  1, reset_pin_p4_7,            "000", '0', second),
    note  (  6),
    note  (  7, { "启动系统振荡器后等待时钟数(复位和掉电唤醒):", "Wait n clocks after MCU is waked up:" }, {}, Box::rc30k_divider),
    choice(  8, low_voltage_4_1_3_7,       "006", '0', first),
    note  (  9, faster_than_12_mhz),
};
constexpr Strip oak_chinese[] = {
    choice(  1, reset_pin_p4_7,            "000", '0', second),
    choice(  5, erase_data_ff,             "081", '0', second),
    note  (  6),
    note  (  7, { "启动系统振荡器后等待时钟数(复位和掉电唤醒):", "Wait n clocks after MCU is waked up:" }, {}, Box::rc30k_divider),
    choice(  8, low_voltage_4_1_3_7,       "006", '0', first),
    note  (  9, faster_than_12_mhz),
};

// ---- page 10: Poplar, Holly. The English page never left the form of Larch's --------------------------------------------
constexpr Strip poplar_chinese[] = {
    note  (  0, { "内部 RC 振荡器频率(选择或直接输入)MHz", "" }, "New_RC_Frequency_Clew"),
    choice(  1, reset_pin_p0_0,            "004", '0', second),
    choice(  2, reset_delay,               "007", '0', first),
    choice(  3, download_pins_p3_2_p3_3,   "080", '1', first),
    choice(  4, erase_data_ff,             "081", '0', second),
    choice(  8, low_voltage_resets,        "017", '1', first),
    choice(  9, low_voltage_protects,      "016", '1', first),
    note  ( 10, { "低电压检测值(>12M建议选高电压,电压值仅供参考)", "" }, "Low_Voltage_Value_Clew"),
    choice( 11, watchdog_locked,           "027", '0', second),
    choice( 12, watchdog_at_power_up,      "025", '0', second),
    choice( 13, watchdog_in_idle,          "023", '0', first, Box::watchdog_divider),
};

// ---- Teak, a chip that was never sold through this tool ------------------------------------------------------------------
constexpr Strip with_third(Strip strip, const Choice& third, std::string_view code)
{
    strip.third = &third;
    strip.third_code = code;
    return strip;
}
constexpr Strip teak[] = {
    choice(  0, clock_source,              "031", '0', second),
    choice(  1, high_or_low_gain,          "036", '1', first),
    choice(  2, download_pins,             "080", '1', first),
    with_third(choice(3, clear_data_5,     "084", '0', second), erase_data_ff.first, "0810"),
    choice(  4, unused_code,               "083", '0', second),
    choice(  8, low_voltage_3_7_3_3,       "006", '0', first),
    choice(  9, data_write_protection,     "007", '0', second),
    choice( 10, watchdog_locked,           "047", '0', second),
    choice( 11, watchdog_at_power_up,      "045", '0', second),
    choice( 12, watchdog_in_idle,          "043", '0', first, Box::watchdog_divider),
};

constexpr Page chinese_pages[] = {
//    page  like           but
    {  0,   {},            alder },
    {  2,   {},            birch_chinese },
    {  4,   {},            cedar },
    {  5,   {},            hazel },
    {  6,   juniper,       juniper_chinese },
    {  7,   juniper,       larch },
    {  8,   juniper,       maple },
    {  9,   juniper,       oak_chinese },
    { 10,   {},            poplar_chinese },
};
constexpr Page english_pages[] = {
    {  0,   {},            alder },
    {  2,   birch_chinese, birch_english },
    {  4,   {},            cedar },
    {  5,   {},            hazel },
    {  6,   {},            juniper },
    {  7,   juniper,       larch },
    {  8,   juniper,       maple },
    {  9,   juniper,       oak_english },
    { 10,   juniper,       larch },
};
// clang-format on

} // namespace

std::span<const Page> option_pages(bool english)
{
    return english ? std::span<const Page>{english_pages} : std::span<const Page>{chinese_pages};
}

std::vector<Strip> strips_of(const Page& page)
{
    std::vector<Strip> strips{page.own.begin(), page.own.end()};
    for (const Strip& strip : page.base) {
        const bool replaced = std::ranges::any_of(page.own, [&](const Strip& own) { return own.index == strip.index; });
        if (!replaced)
            strips.push_back(strip);
    }
    std::ranges::sort(strips, {}, &Strip::index);
    return strips;
}

std::span<const Strip> teak_strips() { return teak; }

} // namespace vrk
