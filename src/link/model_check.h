// Is the chip on the wire the model that the job is for?
#pragma once

#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

namespace vrk {

// By the stepping letter: the family, and where the letter says so the id, or the size. A letter without a rule
// matches.
bool model_matches(const Session& session, const Job& job);

// The same with its consequences: a mismatch beeps, and is said in the report and in a box. The code file has to be
// opened again then, since it was meant for another chip.
Result model_check(const Session& session, const Job& job, Report& report);

} // namespace vrk
