// One chip, from the first sync byte to the last option. What comes before - the press, the job - and what follows -
// the count, the next number, the next chip - is the business of who calls.
#pragma once

#include "link/job.h"
#include "report/report.h"
#include "session/result.h"

namespace vrk {

// Good: the chip holds the job; off_frequency: it does, and its oscillator is too far from the frequency wanted. Both
// are told by report_success, when the caller has put its books in order. Everything else has been said. The port stays
// as the last chapter left it.
Result program_one_chip(Session& session, const Job& job, Report& report);
void report_success(Session& session, const Job& job, Report& report);

// Reads firmware and options of the chip on the wire and writes nothing.
Result read_one_chip(Session& session, const Job& job, Report& report);

} // namespace vrk
