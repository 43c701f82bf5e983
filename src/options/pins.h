// Two pins that the boot code drives for the user, one to steer a transceiver and one to feed an external watchdog, and
// the pin of the ISP DEMO watchdog. The first two are settings and go nowhere else.
#pragma once

#include "form/main_form.h"

namespace vrk {

void fill_pin_lists(MainForm& form); // once, before anything is chosen

// Warns if both functions stand on one pin, and changes nothing. Also where they are switched off.
void check_pin_clash(MainForm& form);

void comb_485_pin_Click(MainForm& form); // a pick from the list and a change of the text alike
void comb_External_WDT_Click(MainForm& form);
void opt_485_pin_Click(MainForm& form); // the two also after the settings have been loaded
void opt_External_WDT_Click(MainForm& form);
void opt_485_logic_Click(MainForm& form);
void opt_ISP_DEMO_WDT_Click(MainForm& form);

} // namespace vrk
