// One download from the click to the result, and its repetition.
#pragma once

#include "form/shell.h"

namespace vrk {

// Row 0: one chip. Row 1: chip after chip, until one fails or the user stops.
void comDownload_Click(Shell& shell, int row);
void comStop_Download_Click(Shell& shell);

// Sends the chip into user code: the short frame 82, then 100 ms for it to leave.
void leave_isp(Shell& shell);

} // namespace vrk
