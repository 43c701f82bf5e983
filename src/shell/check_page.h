// The check page: what a connected chip says of its firmware and its options, in the report and on labels of its own.
#pragma once

#include "options/chip_status.h"
#include "shell/shell.h"

namespace vrk {

// Says every option that holds in the chip, and shows the chip on the check page. A chip whose letter has no page of
// options says nothing, and what the check page shows then stays.
void show_chip_status(Shell& shell, const ChipStatus& status);

// The check page when a model is selected: head and foot, nothing between.
void clear_check_page(Shell& shell);

} // namespace vrk
