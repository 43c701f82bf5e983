// The pages of the two tab strips.
#pragma once

#include "shell/shell.h"

namespace vrk {

void set_up_tabs(Shell& shell);
void show_tabs_of_model(Shell& shell); // hides what the selected model has no use for

void TabStrip1_Click(Shell& shell); // shows the frame of the selected tab
void TabStrip2_Click(Shell& shell);

} // namespace vrk
