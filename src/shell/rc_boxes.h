// The boxes of the RC oscillator's setting.
#pragma once

#include "shell/shell.h"

namespace vrk {

// com_RC_frequency(4): the voltages of the selected model where its family has them, else nothing.
void fill_low_voltage_list(Shell& shell, int default_index);

void sync_rc_divider(Shell& shell); // com_RC_frequency(3) from (1); the setting will be saved
// False: a typed frequency is none that the oscillator can be asked for, and the user has been told the range.
bool rc_frequencies_fit(Shell& shell);
void com_RC_frequency_Click(Shell& shell); // of all indices

} // namespace vrk
