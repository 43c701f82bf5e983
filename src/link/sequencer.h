// One chip, from the first sync byte to the last option. What comes before - the press, the job - and what follows -
// the count, the next number, the next chip - is the business of who calls.
#pragma once

#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

namespace vrk {

// Good: the chip holds the job. Everything else has been said. What is said of a good chip is told by report_success,
// when the caller has put its books in order. The port stays as the last chapter left it.
Result program_one_chip(Session& session, const Job& job, Report& report);
// Good, or off_frequency where the chip holds the job and its oscillator is too far from the frequency wanted.
Result report_success(Session& session, const Job& job, Report& report);

// Reads firmware and options of the chip on the wire and writes nothing.
Result read_one_chip(Session& session, const Job& job, Report& report);

} // namespace vrk
