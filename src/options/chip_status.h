// What a chip has told of itself: its firmware and its option bytes.
#pragma once

#include "options/option_bytes.h"

#include "catalog/mcu_record.h"

#include <string>

namespace vrk {

struct ChipStatus {
    McuRecord model; // of the chip where it is identified, else the one that the user selected
    std::string target_name; // by the chip's id; empty: not in the catalogue
    std::string fw_version; // "6.3"; empty for version 0.0
    std::string fw_letter; // stepping of the boot loader, "A" to "Z"
    StatusBytes status_bytes{};
    bool options_told = true; // false: the chip's frame had no options, and nothing is said of them
    bool double_speed_bit = false; // bit 3 of byte 22 of the power-up frame; means 6 clocks a cycle with letter A only
};

} // namespace vrk
