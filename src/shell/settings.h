// What the user has chosen survives from one run to the next: section Settings of the store. Most of it is a table of
// controls, see settings_table.h. The numbers that are stamped keep theirs in sections of their own, and the paths of
// the files are stored where a file is chosen.
//
// A value that does not fit falls to the first of its list, text where a number belongs reads as 0, and a missing key
// takes its default: whatever a store holds, the program comes up.
#pragma once

#include "shell/arm_save.h"
#include "shell/shell.h"

namespace vrk {

// Reads everything, the model first, since choosing it redraws the option panel. Lists are to be filled by then.
void load_settings(Shell& shell);

void save_settings(Shell& shell); // writes everything
void save_window(Shell& shell); // the window's place alone

// After a change by hand: arms the save where the control is one that is kept, or one of the few that bring their
// neighbours into the store.
void arm_save_after(Shell& shell, const Control& control);

} // namespace vrk
