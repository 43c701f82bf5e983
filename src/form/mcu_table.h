// The catalogue as text: cells by series, row and column, filled once at start and only read after.
// All cells begin empty. A row whose name (column 9) is empty holds no model.
#pragma once

#include "platform/text_number.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

// Columns of a row.
enum class McuColumn : int {
    series = 0,
    mcu_id = 1,
    ap_first = 2,
    ap_last = 3,
    ap_last_alt = 4,
    eeprom_first = 5,
    eeprom_last = 6,
    isp_first = 7,
    isp_last = 8,
    mcu_name = 9,
    ap_abuts_isp = 10,
    alt_id = 11,
    rom_image = 12,
    listed = 13,
    cap_new_protocol = 14,
    cap_parity = 15,
    cap_parity_even = 16,
    cap_long_frame = 17,
    cap_no_option_write = 18,
    cap_all_flash_ap = 19,
    cap_no_eeprom = 20,
};

class McuTable {
public:
    static constexpr int series_count = 21;
    static constexpr int row_count = 141;
    static constexpr int column_count = 21;

    // Outside the table every cell is empty.
    const std::string& cell(int series, int row, int column) const
    {
        if (!inside(series, row, column)) {
            return empty_;
        }
        const auto& rows = pages_[static_cast<std::size_t>(series)];
        if (static_cast<std::size_t>(row) >= rows.size()) {
            return empty_;
        }
        return rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
    const std::string& cell(int series, int row, McuColumn column) const
    {
        return cell(series, row, static_cast<int>(column));
    }

    // Stores the text without the blanks at its ends. Outside the table nothing is stored.
    void set_cell(int series, int row, int column, std::string_view text)
    {
        if (!inside(series, row, column)) {
            return;
        }
        auto& rows = pages_[static_cast<std::size_t>(series)];
        if (static_cast<std::size_t>(row) >= rows.size()) {
            rows.resize(static_cast<std::size_t>(row) + 1);
        }
        rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = trimmed(text);
    }

private:
    static bool inside(int series, int row, int column)
    {
        return series >= 0 && series < series_count && row >= 0 && row < row_count && column >= 0 &&
            column < column_count;
    }

    // A page holds rows up to the last one filled only: most of the 62181 cells never hold a text.
    using Row = std::array<std::string, column_count>;
    std::array<std::vector<Row>, series_count> pages_;
    std::string empty_;
};

} // namespace vrk
