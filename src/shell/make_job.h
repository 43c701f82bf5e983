// What stands on the screen becomes a job: the one place where controls are read for a chip.
#pragma once

#include "link/job.h"
#include "shell/shell.h"

namespace vrk {

// Takes a snapshot of the option panel, too.
Job make_job(Shell& shell);

// Parts of it that other jobs have, too.
std::string chosen_port_path(const Shell& shell); // of step 3; empty: none
std::vector<StampedNumber> stamped_numbers(const Shell& shell);

} // namespace vrk
