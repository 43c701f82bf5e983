// Everything that one job of the off-line programmer board needs, as values: made at the press and not changed from
// then on. The board keeps what it gets and programs chips by itself.
#pragma once

#include "session/image_job.h"
#include "session/session.h"

#include "image/auto_increase.h"
#include "options/option_bytes.h"

#include <cstdint>
#include <string>

namespace vrk {

// A serial number that the board counts and stamps by itself. Its place stands in the image whether it is in use or
// not.
struct BoardNumber {
    bool in_use = false;
    std::int32_t address = 0; // of its last byte in its buffer
    std::int32_t bytes = 0;
    std::int64_t next_value = 0;
    std::int32_t increment = 0;
    AutoIncrease::System format = AutoIncrease::hex;
};

// What the board's own checks of a chip leave out or let pass.
struct BoardChecks {
    bool options_only = false; // compare the options of the chip, program nothing
    bool pass_below_5_ua = false; // leakage current
    bool pass_below_2_ua = false;
};

inline LineChoice board_line()
{
    LineChoice line;
    line.contact_baud = 115200;
    line.max_baud = 115200;
    return line;
}

struct BoardJob {
    McuRecord model; // of the chips that the board will program
    std::string model_name; // as the user reads it
    LineChoice line = board_line(); // the port; the speed is always the board's own
    std::string reported_id; // of the chip that was connected last; empty: none was

    JobImage code;
    JobImage data; // EEPROM
    OptionImage options;
    BoardNumber code_number;
    BoardNumber data_number;

    double quantity = 10; // chips that the board may program, as typed
    int pins = 0; // of the chip's case
    BoardChecks checks;
    bool behind_sorter = false; // an automatic sorter stands between tool and board, and has to be switched through
    bool asks_board_type = false; // compare the type that the board tells with the model. No board in use needs it
};

} // namespace vrk
