#include "catalog/rows.h"

#include "catalog/isp_start.h"
#include "platform/text_number.h"

#include <cstdint>

namespace vrk {
namespace {

const std::string& name_at(const McuTable& table, int series, int row)
{
    return table.cell(series, row, McuColumn::mcu_name);
}

// Its own id or its older one. The id asked for is never empty, so that cells without an older id do not match.
bool has_id(const McuTable& table, int series, int row, std::string_view id)
{
    return table.cell(series, row, McuColumn::mcu_id) == id || table.cell(series, row, McuColumn::alt_id) == id;
}

std::int32_t number_at(const McuTable& table, int series, int row, McuColumn column)
{
    return static_cast<std::int32_t>(number_in(table.cell(series, row, column)));
}

bool flag_at(const McuTable& table, int series, int row, McuColumn column)
{
    return number_at(table, series, row, column) != 0;
}

} // namespace

FoundRow find_mcu_by_id(const McuTable& table, std::string_view id)
{
    const std::string_view wanted = trimmed(id);
    if (wanted.empty()) {
        return {}; // or it would equal the first empty cell for an older id
    }
    if (wanted.size() == 2) {
        constexpr int short_id_series = 1;
        for (int row = 0; row < McuTable::row_count; ++row) {
            if (table.cell(short_id_series, row, McuColumn::mcu_id) == wanted) {
                return {short_id_series, row, name_at(table, short_id_series, row)};
            }
        }
        return {};
    }
    for (int series = 2; series < McuTable::page_count; ++series) {
        for (int row = 0; row < McuTable::row_count; ++row) {
            if (has_id(table, series, row, wanted)) {
                return {series, row, name_at(table, series, row)};
            }
        }
    }
    return {};
}

std::optional<FoundRow> locate_mcu_by_name(const McuTable& table, std::string_view name)
{
    if (name.empty()) {
        return std::nullopt; // or it would equal the first row without a model
    }
    for (int series = 0; series < McuTable::page_count; ++series) {
        for (int row = 0; row < McuTable::row_count; ++row) {
            if (name_at(table, series, row) == name) {
                return FoundRow{series, row, std::string(name)};
            }
        }
    }
    return std::nullopt;
}

McuRecord read_mcu_row(const McuTable& table, int series, int row)
{
    const auto text = [&](McuColumn column) { return table.cell(series, row, column); };
    const auto number = [&](McuColumn column) { return number_at(table, series, row, column); };
    const auto flag = [&](McuColumn column) { return flag_at(table, series, row, column); };

    McuRecord record;
    record.series = static_cast<std::int16_t>(number(McuColumn::series));
    record.mcu_id = text(McuColumn::mcu_id);
    record.ap_first = number(McuColumn::ap_first);
    record.ap_last = number(McuColumn::ap_last);
    record.ap_last_alt = number(McuColumn::ap_last_alt);
    record.eeprom_first = number(McuColumn::eeprom_first);
    record.eeprom_last = number(McuColumn::eeprom_last);
    record.isp_first = number(McuColumn::isp_first);
    record.isp_last = number(McuColumn::isp_last);
    record.ap_abuts_isp = flag(McuColumn::ap_abuts_isp);
    record.mcu_name = text(McuColumn::mcu_name);
    record.alt_id = text(McuColumn::alt_id);
    record.rom_image = text(McuColumn::rom_image);
    record.listed = flag(McuColumn::listed);
    record.cap_new_protocol = flag(McuColumn::cap_new_protocol);
    record.cap_parity = flag(McuColumn::cap_parity);
    record.cap_parity_even = flag(McuColumn::cap_parity_even);
    record.cap_long_frame = flag(McuColumn::cap_long_frame);
    record.cap_no_option_write = flag(McuColumn::cap_no_option_write);
    record.cap_all_flash_ap = flag(McuColumn::cap_all_flash_ap);
    record.cap_no_eeprom = flag(McuColumn::cap_no_eeprom);
    record.isp_start = derive_isp_start(record).isp_start;
    return record;
}

} // namespace vrk
