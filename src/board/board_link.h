// The talk with the board: calling it until it has power, asking what it is, erasing it. Its frames are model frames
// with a CRC in the place of the sum, always at 115200.
#pragma once

#include "board/board_job.h"

#include "report/report.h"
#include "session/result.h"
#include "session/session.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vrk {

// What the board has told of itself.
struct BoardFacts {
    std::string firmware; // two hexadecimal digits
    std::int32_t capacity = 0; // bytes of code and data that it holds
    bool single_area = false; // shows its memory in two banks, one at a time
    std::optional<std::uint8_t> type; // of the chips that it programs; of boards that are asked for it

    int version() const; // the digits read as a decimal number: 17 for "17", 1 for "1A"
};

// Opens the port, calls the board until it answers, and asks it. Good: `facts` is filled. What went wrong has been
// said.
Result connect_board(Session& session, const BoardJob& job, Report& report, BoardFacts& facts);
// The board's line, at its speed and without parity.
bool open_board_line(Session& session);

// Calls again a board that has been silent while it worked.
bool call_board_again(Session& session);
bool erase_board(Session& session);
bool erase_second_area(Session& session);

// How a stage of the board's job ended that did not go well: as stopped, or by the failure given, with so many beeps.
Result board_failed(const Session& session, Report& report, int beeps, const Line& text, Result failure);

} // namespace vrk
