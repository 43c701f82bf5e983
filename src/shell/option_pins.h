// Two pins that the boot code drives for the user, one to steer a transceiver and one to feed an external watchdog, and
// the pin of the ISP DEMO watchdog. The first two are settings and go nowhere else.
#pragma once

#include "shell/shell.h"

namespace vrk {

// Warns if both functions stand on one pin, and changes nothing. Also where they are switched off.
void check_pin_clash(Shell& shell);

void comb_485_pin_Click(Shell& shell); // a pick from the list and a change of the text alike
void comb_External_WDT_Click(Shell& shell);
void opt_485_logic_Click(Shell& shell);

// What goes with a pin can be chosen where the pin is used, and while the job may be changed. After each choice, after
// the settings have been loaded, and with the panel's state.
void enable_pin_choices(Shell& shell);
void enable_watchdog_pin(Shell& shell); // likewise, of the pin that the boot loader feeds; not after the settings

} // namespace vrk
