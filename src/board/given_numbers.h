// The serial numbers that a board gives by itself, one to each chip of its quantity.
#pragma once

#include "board/board_job.h"

#include "report/text.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vrk {

struct GivenNumbers {
    std::int64_t first = 0;
    std::int64_t last = 0; // of the last chip
    std::int64_t step = 0; // as the board counts: the header has one byte for it
};
GivenNumbers given_numbers(const BoardNumber& number, double quantity);

// What the board's next numbers would grow to over the whole quantity is too large.
enum class NumberGrowth { fits, code_too_large, data_too_large };
NumberGrowth number_growth(const BoardJob& job);
const Line& growth_text(NumberGrowth growth); // of one that does not fit

// Why the board would not give each chip a number of its own: they outgrow what they may be or the bytes that they
// have, or do not move at all.
struct NumberRefusal {
    Line text;
    Line title;
};
std::optional<NumberRefusal> why_numbers_are_refused(const BoardJob& job);

// Of each number in use, what the board will give, and that the tool's own number stays where it is: another board that
// is prepared like this one would give the same numbers again.
std::vector<Line> given_texts(const BoardJob& job);

} // namespace vrk
