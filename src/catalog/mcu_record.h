// One model of the catalogue in numbers and flags: the row of McuTable that was taken, parsed. There is one for the
// model that the user selected, and one for the chip on the wire.
#pragma once

#include <cstdint>
#include <string>

namespace vrk {

enum class VoltageClass : std::uint8_t { V5, V3 };

// Addresses are inclusive at both ends. A range whose last lies below its first means "has none".
// The defaults are those of no model at all: no flag set, no data flash, one byte of code.
struct McuRecord {
    std::int16_t series = 0; // family number, 0 to 18
    std::string mcu_id; // what the chip reports: upper-case hexadecimal, two digits in series 0 and 1, else four
    std::int32_t ap_first = 0; // application code
    std::int32_t ap_last = 0;
    std::int32_t ap_last_alt = 0; // held for the shape of the row; nothing reads it
    std::int32_t eeprom_first = 0; // data flash
    std::int32_t eeprom_last = -1;
    std::int32_t isp_first = 0; // boot area as tabulated
    std::int32_t isp_start = 0; // boot area as the chip of this family lays it out; derived, see catalog/isp_start.h
    std::int32_t isp_last = 0;
    bool ap_abuts_isp = false; // the code area ends right below isp_start
    std::string mcu_name; // "Juniper-60Q": key of the tree and of project files
    std::string alt_id; // an older id of the same model; empty in most
    std::string rom_image; // name of a boot ROM image; series 0 only
    bool listed = false; // may be offered in the device tree
    bool cap_new_protocol = false; // newer generation of the ISP protocol
    bool cap_parity = false; // the link uses a parity bit
    bool cap_parity_even = false; // and it is even; otherwise odd
    bool cap_long_frame = false; // frames in the longer form, status frame one byte longer
    bool cap_no_option_write = false; // no option bytes to write, no option rows to show
    bool cap_all_flash_ap = false; // code may reach the top of the flash
    bool cap_no_eeprom = false; // no buffer for the data flash

    friend bool operator==(const McuRecord&, const McuRecord&) = default;
};

} // namespace vrk
