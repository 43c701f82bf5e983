// The option panel: rebuilt from the page of the selected model's family at every selection.
#pragma once

#include "shell/shell.h"

namespace vrk {

void build_option_panel(Shell& shell);

// The value and the visibility of one row.
void apply_option_row(Shell& shell, int page, Control& control, int row);

// What can be changed in the panel state in force, of the options and of the project fields.
void apply_options_to_controls(Shell& shell);
// The same when the panel state changes: the strips of a model whose options cannot be written are left alone.
void apply_panel_state_to_options(Shell& shell);

// The fields of a serial number can be used while the box beside them is off, and where it can be used itself.
void enable_number_fields(Shell& shell);

// The default of the low-voltage pair goes by the model in series 3 to 5; Chinese page only. Before the panel is built.
void change_low_voltage_default(Shell& shell, std::string_view node_key);

// A click on a button of Option0 to Option13: what else it changes. The button itself is set by then.
void option_button_click(Shell& shell, int strip, int index);

} // namespace vrk
