// The window without all but its download group, for a line that does nothing else.
#pragma once

#include "shell/shell.h"

namespace vrk {

void show_main_window(Shell& shell); // all of it, or what is left when it is shrunk
void comMastWindow_Click(Shell& shell);

} // namespace vrk
