// The setting of the internal RC oscillator: its lists, and the option bytes that it goes into.
#pragma once

#include "form/shell.h"

namespace vrk {

void fill_rc_lists(Shell& shell); // once, before anything is chosen

// com_RC_frequency(4): the voltages of the selected model where its family has them, else nothing.
void fill_low_voltage_list(Shell& shell, int default_index);

void sync_rc_divider(Shell& shell); // com_RC_frequency(3) from (1); the setting will be saved
void com_RC_frequency_Click(Shell& shell); // of all indices

// The fields of the selected model's family, into column 0 of option_bytes. No field in most families.
void write_rc_bytes(Shell& shell);

} // namespace vrk
