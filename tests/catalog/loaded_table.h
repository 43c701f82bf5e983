// The catalogue loaded once, and the words in which a test speaks of its rows.
#pragma once

#include "catalog/mcu_record.h"
#include "catalog/mcu_table.h"
#include "catalog/ranges.h"
#include "catalog/rows.h"

#include <array>
#include <string>
#include <string_view>

namespace catalog_test {

inline vrk::McuTable load(bool show_unreleased)
{
    vrk::McuTable table;
    vrk::load_mcu_tables(table, show_unreleased);
    return table;
}

inline const vrk::McuTable& table()
{
    static const vrk::McuTable loaded = load(false);
    return loaded;
}

inline const vrk::McuTable& unreleased_table()
{
    static const vrk::McuTable loaded = load(true);
    return loaded;
}

// The record of a name; a name that the catalogue lacks gives a record without a name.
inline vrk::McuRecord record(std::string_view name)
{
    const auto found = vrk::locate_mcu_by_name(table(), name);
    return found ? vrk::read_mcu_row(table(), found->series, found->row) : vrk::McuRecord{};
}

using Cells = std::array<const char*, vrk::McuTable::column_count>;

inline constexpr std::array column_names = {"series", "mcu_id", "ap_first", "ap_last", "ap_last_alt", "eeprom_first",
    "eeprom_last", "isp_first", "isp_last", "mcu_name", "ap_abuts_isp", "alt_id", "rom_image", "listed",
    "cap_new_protocol", "cap_parity", "cap_parity_even", "cap_long_frame", "cap_no_option_write", "cap_all_flash_ap",
    "cap_no_eeprom"};

inline std::string place(int series, int row)
{
    return "series " + std::to_string(series) + " row " + std::to_string(row);
}

// One line for each cell that differs; empty if none does.
inline std::string differences(const vrk::McuTable& found, int series, int row, const Cells& wanted)
{
    std::string text;
    for (std::size_t column = 0; column < wanted.size(); ++column) {
        const std::string& cell = found.cell(series, row, static_cast<int>(column));
        if (cell != wanted[column]) {
            text += place(series, row) + " (" + wanted[9] + ") " + column_names[column] + ": found \"" + cell +
                "\", wanted \"" + wanted[column] + "\"\n";
        }
    }
    return text;
}

// The names of a family in row order, a blank between them.
inline std::string names(const vrk::McuTable& found, int series)
{
    std::string text;
    for (int row = 0; row < vrk::McuTable::row_count; ++row) {
        const std::string& name = found.cell(series, row, vrk::McuColumn::mcu_name);
        text += name.empty() || text.empty() ? name : " " + name;
    }
    return text;
}

inline int count_rows(const vrk::McuTable& found, int series, vrk::McuColumn filled)
{
    int count = 0;
    for (int row = 0; row < vrk::McuTable::row_count; ++row) {
        count += found.cell(series, row, filled).empty() ? 0 : 1;
    }
    return count;
}

} // namespace catalog_test
