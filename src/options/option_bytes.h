// The option bytes of a chip by row: as they are wanted, and as they were read.
#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>

namespace vrk {

constexpr int option_rows = 17; // option bytes 0 to 16

using OptionBytes = std::array<std::uint8_t, option_rows>; // wanted in the chip
using StatusBytes = std::array<std::int16_t, option_rows>; // read from a chip
using ToldRows = std::bitset<option_rows>; // rows of these that the chip has told; of the others nothing is known

struct OptionImage {
    // Column 0: wanted in the chip. 1: the start value. 2: a second one, which cannot change the result. 3: not used.
    std::uint8_t bytes[option_rows][4] = {};
    std::uint8_t spare_row_16 = 0; // what row 16 held before the 16-byte families made it 255

    OptionBytes wanted() const
    {
        OptionBytes column{};
        for (std::size_t row = 0; row < column.size(); ++row)
            column[row] = bytes[row][0];
        return column;
    }
    friend bool operator==(const OptionImage&, const OptionImage&) = default;
};

} // namespace vrk
