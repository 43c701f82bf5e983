// Everything that one chip needs, as values: made when the press comes and not changed from then on. What is not in the
// job does not reach a chip.
#pragma once

#include "session/session.h"

#include "catalog/mcu_record.h"
#include "options/option_bytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vrk {

// A buffer as it stood at the press; index is the address. Numbers are stamped into it.
struct JobImage {
    std::vector<std::uint8_t> bytes;
    std::int32_t low = 0; // first address that the last load wrote
    std::int32_t high = 1023; // last one that counts
    std::int32_t view_high = 1023; // of all merged loads: what the plan goes by
    bool loaded = false;
};

// A serial number that stands in one of the images.
struct StampedNumber {
    std::int32_t flash_address = 0; // of its lowest byte
    std::vector<std::uint8_t> bytes;
};

struct Job {
    static constexpr std::int32_t write_chunk = 128; // bytes of one data frame

    McuRecord model; // the chip that it is for
    std::string model_name; // as the user reads it
    bool english = false; // the English edition refuses boot loaders that are too old for it
    LineChoice line;

    JobImage code;
    JobImage data; // EEPROM
    std::vector<StampedNumber> numbers;

    OptionImage options;
    bool double_speed = false; // the choice of it, which also goes by a baud reload of its own
    bool guards_block_1 = false; // block 1 must not program block 0
    std::optional<std::uint8_t> watchdog_pin; // fed by the boot loader while it works; nothing: none has to be

    bool calibrate_rc = false; // measure the oscillator during the connection
    double rc_target_mhz = 0;
};

} // namespace vrk
