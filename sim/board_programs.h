// What a board does with the image that it holds, once it stands alone on a bench: it checks itself, takes one chip off
// its quantity, stamps the next numbers and puts code, data and options into the chip, as its header tells.
#pragma once

#include "sim/board.h"
#include "sim/chip.h"

namespace sim {

// As its lamps show it.
enum class BoardRun {
    programmed,
    self_check_error, // header or block CRCs are not those of what it holds
    wrong_model, // the chip is another one than the header tells
    used_up // the quantity
};

int chips_left(const Board& board); // that it may still program
// Nothing but a programmed chip takes one off the quantity.
BoardRun program_chip(Board& board, Chip& chip);

} // namespace sim
