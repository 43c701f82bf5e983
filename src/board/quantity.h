// How many chips a board may program before it refuses. The board counts in flash, which can clear bits without an
// erasure: so the number stands there as a row of set bits, and each chip takes one of them.
#pragma once

#include "board/board_job.h"

#include "report/text.h"

#include <cstdint>
#include <vector>

namespace vrk {

enum class QuantityFault { none, too_small, too_large };

double board_quantity(const BoardJob& job); // a whole number
QuantityFault quantity_fault(const BoardJob& job);
const Text& quantity_text(QuantityFault fault); // of a fault, not of none

// Rows of bits, from the lowest bit of the first byte on: one bit for 2048 chips, and one for each of the rest. Meant
// for a quantity without a fault.
struct QuantityRows {
    std::vector<std::uint8_t> thousands;
    std::vector<std::uint8_t> rest;
};
QuantityRows quantity_rows(const BoardJob& job);

} // namespace vrk
