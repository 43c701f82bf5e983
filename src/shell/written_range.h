// What of a buffer a download puts into the chosen model: everything else in it stays here.
#pragma once

#include "image/range_rules.h"
#include "shell/shell.h"

namespace vrk {

// First and last address; empty where no byte of the buffer goes anywhere. The version of the boot loader is not known
// before a chip has told it: what one of them takes counts.
AddressRange written_range(const Shell& shell, BufferKind kind);

} // namespace vrk
