// Reads the serial memory of the off-line board, a 24C512 of 64 KB, page by page. A service job: it writes the code
// file into the board's own memory first.
#pragma once

#include "board/board_job.h"

#include "report/report.h"
#include "session/result.h"
#include "session/session.h"

#include <cstdint>
#include <vector>

namespace vrk {

struct MemoryRead {
    Result result = Result::good;
    std::vector<std::uint8_t> pages; // from address 0 on, as many as have come in: 64 KB where all is good
    bool line_lost = false; // behind the first job the port did not open again: the code buffer is to be emptied
};
MemoryRead read_board_memory(Session& session, const BoardJob& job, Report& report);

Bytes build_page_request(int page); // 0 to 511

} // namespace vrk
