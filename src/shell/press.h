// The buttons that start and stop a sequence on a chip, and what surrounds each chip: the sealed job, the books, the
// next one of a repeat.
#pragma once

#include "shell/shell.h"

namespace vrk {

// Row 0: one chip. Row 1: chip after chip, until one fails or the user stops.
void comDownload_Click(Shell& shell, int row);
void comStop_Download_Click(Shell& shell);
void comReadChipLock_Click(Shell& shell); // firmware and options are read, nothing is written

} // namespace vrk
