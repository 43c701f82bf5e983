// What one chip is to hold, as values: the part of a job that the write stage goes by, whoever has made the connection.
#pragma once

#include "catalog/mcu_record.h"

#include <cstdint>
#include <vector>

namespace vrk {

// A buffer as it stood at the press; index is the address. Numbers are stamped into it.
struct JobImage {
    std::vector<std::uint8_t> bytes;
    std::int32_t low = 0; // first address that the last load wrote
    std::int32_t high = 1023; // last one that counts
    std::int32_t view_high = 1023; // of all merged loads: what the plan goes by
    bool loaded = false;
    friend bool operator==(const JobImage&, const JobImage&) = default;
};

// A serial number that stands in one of the images.
struct StampedNumber {
    std::int32_t flash_address = 0; // of its lowest byte
    std::vector<std::uint8_t> bytes;
    friend bool operator==(const StampedNumber&, const StampedNumber&) = default;
};

struct ImageJob {
    McuRecord model; // the chip that it is for
    JobImage code;
    JobImage data; // EEPROM
    std::vector<StampedNumber> numbers;
    friend bool operator==(const ImageJob&, const ImageJob&) = default;
};

} // namespace vrk
