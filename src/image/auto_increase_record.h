// A number that is stamped into each chip: where it lies in its buffer and what comes next.
#pragma once

#include <cstdint>
#include <string>

namespace vrk {

struct AutoIncrease {
    enum System : std::int16_t { hex, bcd, ascii };

    std::string name; // "AP_AUTO_INCREASE" or "Data_Auto_Increase"
    std::int32_t address = 0; // of the number's last byte in the buffer
    std::int16_t bytes = 0;
    std::string next_value; // decimal, zero padded
    std::int16_t increment = 0;
    bool valid = false; // the enabled record passed its checks
    std::int16_t system = hex;
};

} // namespace vrk
