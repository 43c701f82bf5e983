// What stands in a HEX file, before anybody loads it: its records, the addresses that they fill, and those that more
// than one of them fills.
#pragma once

#include "image/hex_lines.h"
#include "image/range_rules.h"

#include <cstdint>
#include <vector>

namespace vrk {

struct HexSurvey {
    int data_records = 0;
    int other_records = 0; // neither data nor end: their bytes are stored as data, which is seldom meant
    int wrong_checksums = 0;
    int first_wrong_line = 0; // from 1; 0: none
    bool end_record = false; // a good one
    std::uint32_t sum = 0; // of all data bytes
    std::vector<AddressRange> ranges; // filled, in rising order, none touches the next
    std::vector<AddressRange> overlaps; // filled more than once, likewise
};
HexSurvey survey(HexLines& lines); // up to the first end record

} // namespace vrk
