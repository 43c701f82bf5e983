// The programming stage: what of code and EEPROM data goes into this chip, range by range.
#pragma once

#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

namespace vrk {

// Writes both images. Good: all blocks came back with their sums; session.program_ok says the same. What went wrong has
// been said.
Result program_all(Session& session, const Job& job, Report& report);

} // namespace vrk
