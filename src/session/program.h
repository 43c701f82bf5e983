// The programming stage: what of code and EEPROM data goes into this chip, range by range.
#pragma once

#include "session/image_job.h"
#include "session/result.h"
#include "session/session.h"

#include "report/report.h"

namespace vrk {

// Writes both images. Good: all blocks came back with their sums; session.program_ok says the same. What went wrong has
// been said.
Result program_all(Session& session, const ImageJob& job, Report& report);

} // namespace vrk
