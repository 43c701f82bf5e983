// The catalogue as text: cells by series, row and column, filled once at start and only read after.
// A row whose name (column 9) is empty holds no model.
#pragma once

#include "catalog/text_table.h"

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

using McuTable = TextTable<21, 141, 21>;

} // namespace vrk
