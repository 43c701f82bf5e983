#include "catalog/attributes.h"

#include <string_view>

namespace vrk {
namespace {

enum Series : std::int16_t { aspen = 1, birch = 2, cedar = 3, elm = 4, fir = 5, hazel = 6, juniper = 7 };

constexpr std::int32_t least_data_flash_span = 100; // last - first must exceed it

std::string_view word_of(std::string_view name) { return name.substr(0, name.find('-')); }

std::string_view rest_of(std::string_view name)
{
    const auto dash = name.find('-');
    return dash == std::string_view::npos ? std::string_view() : name.substr(dash + 1);
}

} // namespace

bool is_iap_class(const McuRecord& record) { return rest_of(record.mcu_name).starts_with('I'); }

VoltageClass voltage_class(const McuRecord& record)
{
    // `ElmL-Series` stands for a whole series and has its mark before the dash.
    const std::string_view name = record.mcu_name;
    const bool marked = rest_of(name).ends_with('L') || word_of(name).ends_with('L');
    return marked ? VoltageClass::V3 : VoltageClass::V5;
}

std::optional<int> size_digits(const McuRecord& record)
{
    if (record.series == cedar) {
        return 52;
    }
    const bool told = record.series >= elm && record.series <= juniper;
    // Any last address within the last KB gives the size, so the 24 KB models that end a byte early have 24 as well.
    return told ? std::optional<int>(record.ap_last / 1024 + 1) : std::nullopt;
}

bool is_wide_boot(const McuRecord& record) { return record.series == birch && record.mcu_id == "F105"; }

bool is_aspen_top(const McuRecord& record) { return record.series == aspen && record.mcu_id == "56"; }

bool series_is_rc_group(int series) { return series >= 11 && series <= 13; }

bool is_newer_series(int series) { return series >= 3 && !series_is_rc_group(series); }

bool series_is_15_16_17(int series) { return series >= 15 && series <= 17; }

bool series_is_15_16(int series) { return series == 15 || series == 16; }

bool has_eeprom_buffer(const McuRecord& record)
{
    const bool own_buffer = record.series == fir || (record.series >= hazel && !series_is_rc_group(record.series));
    return own_buffer && !record.cap_no_eeprom && record.eeprom_last - record.eeprom_first > least_data_flash_span;
}

bool has_separate_eeprom(const McuRecord& record) { return has_eeprom_buffer(record); }

std::int32_t block_bytes(const McuRecord& record) { return record.series == 0 ? 128 : 512; }

std::int32_t option_family(int series)
{
    if (series == 18) {
        return 3;
    }
    if (series_is_15_16_17(series)) {
        return 4;
    }
    if (series >= 11 && series <= 14) {
        return 0;
    }
    if (series >= 6 && series <= 10) {
        return 2;
    }
    return series >= 3 && series <= 5 ? 1 : 0;
}

} // namespace vrk
