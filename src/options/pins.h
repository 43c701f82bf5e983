// Two pins that the boot code drives for the user, one to steer a transceiver and one to feed an external watchdog, and
// the pin of the ISP DEMO watchdog. The first two are settings and go nowhere else.
#pragma once

#include "form/shell.h"

namespace vrk {

void fill_pin_lists(Shell& shell); // once, before anything is chosen

// Warns if both functions stand on one pin, and changes nothing. Also where they are switched off.
void check_pin_clash(Shell& shell);

void comb_485_pin_Click(Shell& shell); // a pick from the list and a change of the text alike
void comb_External_WDT_Click(Shell& shell);
void opt_485_pin_Click(Shell& shell); // the two also after the settings have been loaded
void opt_External_WDT_Click(Shell& shell);
void opt_485_logic_Click(Shell& shell);
void opt_ISP_DEMO_WDT_Click(Shell& shell);

} // namespace vrk
