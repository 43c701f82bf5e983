// The line without a window: the same lanes, a line of text for each thing that happens.
#pragma once

#include "lanes/lane_process.h"

namespace vrk::lanes {

// Starts a lane at each port and returns when all have ended, which an interrupt brings about. The status: 0 all ended
// as they should, 130 interrupted, 1 a lane could not begin or broke off. Wants a QCoreApplication.
int run_headless(const LineTerms& terms, const QStringList& ports);

} // namespace vrk::lanes
