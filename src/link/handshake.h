// From silence to a known chip at the fastest baud.
#pragma once

#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

namespace vrk {

enum class Purpose { download, read_only };

// The whole connection with its messages. Good: connected, and of a download the chip is the model of the job;
// chip.target_ok says the same.
Result connect_target(Session& session, const Job& job, Purpose purpose, Report& report);

// Command 50, up to three times; fills status_bytes. True: the chip has answered; chip.options_read_ok says whether the
// answer has told its options.
bool read_status(Session& session, const Job& job);

// Sends the chip into user code: the short frame 82, then 100 ms for it to leave. Not ended by a stop.
void leave_isp(Session& session);
// The same, and the port is free for the next chip.
void let_chip_go(Session& session);

} // namespace vrk
