// The pages of the two tab strips.
#pragma once

#include "form/main_form.h"

namespace vrk {

void set_up_tabs(MainForm& form);
void show_tabs_of_model(MainForm& form); // hides what the selected model has no use for

void TabStrip1_Click(MainForm& form); // shows the frame of the selected tab
void TabStrip2_Click(MainForm& form);

} // namespace vrk
