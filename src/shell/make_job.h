// What stands on the screen becomes a job: the one place where controls are read for a chip.
#pragma once

#include "link/job.h"
#include "shell/shell.h"

namespace vrk {

// Takes a snapshot of the option panel, too.
Job make_job(Shell& shell);

} // namespace vrk
