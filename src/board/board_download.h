// One job of the off-line programmer board, from the first call to its last byte.
#pragma once

#include "board/board_image.h"
#include "board/board_job.h"

#include "report/report.h"
#include "session/result.h"
#include "session/session.h"

namespace vrk {

// Good: the board holds the job, and it has been said. Whatever else has been said too. The port stays as the job left
// it. `kept` is the target's memory as the board got it, with its numbers left open: in place of a stamped number it
// goes into the code buffer. Empty where the buffer stays as it is. `image` is what the board was to get, as far as the
// job came: the quantity, before the board has told its size; nothing where that was refused.
struct BoardOutcome {
    Result result = Result::good;
    BoardImage image;
    std::vector<std::uint8_t> kept;
};
BoardOutcome download_to_board(Session& session, const BoardJob& job, Report& report);

// The same way for the service job that goes before a reading of the board's memory chip: the bare code and data, with
// the id and the options of the model at their top, in place of the board's image.
Result write_service_image(Session& session, const BoardJob& job, Report& report);

} // namespace vrk
