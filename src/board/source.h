// The memory of one target chip as a job puts it together: code, EEPROM data where the model has some, and holes of FF
// where the board will stamp its numbers.
#pragma once

#include "board/board_job.h"

#include <cstdint>
#include <vector>

namespace vrk {

struct BoardSource {
    static constexpr std::int32_t highest = 0x10000;

    std::vector<std::uint8_t> bytes = std::vector<std::uint8_t>(highest + 1); // index is the target's address
    std::int32_t last = 0; // effective last address; the first one is 0
};

BoardSource build_board_source(const BoardJob& job);
// The last address counts code and data one behind the other. Where the data flash of a model lies higher than that, a
// board would leave the end of the data out: true where it would.
bool data_ends_behind(const BoardJob& job, const BoardSource& source);

// Where a number lies, split where it crosses a block of 128 bytes. Addresses of the target.
struct NumberField {
    std::int32_t first = 0;
    std::int32_t first_count = 0; // bytes in the first block
    std::int32_t second_first = 0; // where it goes on; the last address of the field where it stays in one block
    std::int32_t second_count = 0; // bytes there, 0 where it stays in one block

    std::int32_t last() const { return first + first_count + second_count - 1; }
};
// `base` is the target's address of the buffer's first byte.
NumberField number_field(const BoardNumber& number, std::int32_t base);
NumberField code_number_field(const BoardJob& job);
NumberField data_number_field(const BoardJob& job);

// FF over the whole of each number that is in use: flash that the board can still write.
void leave_numbers_open(const BoardJob& job, BoardSource& source);
// Every number that is in use lies in 0..last: the board will write it.
bool numbers_lie_below(const BoardJob& job, std::int32_t last);

} // namespace vrk
