// What has been set gets to the disk, and who uses the program learns when it does not.
#pragma once

#include "report/text.h"
#include "shell/shell.h"

namespace vrk {

// Writes the settings through. False: they are not on the disk. At the first failure the user is told at once, or,
// while a sequence runs, where a box does not hold it up: see tell_settings_fault.
bool keep_settings(Shell& shell);

// A failure that has not been told yet, in a box. Nothing where there is none.
void tell_settings_fault(Shell& shell);

Line settings_fault_text(const SettingsFault& fault);

} // namespace vrk
