// From a row of the option table to its control and back.
#pragma once

#include "shell/shell.h"

#include <string>
#include <string_view>

namespace vrk {

// Null where the row names none, or one that the form does not have.
Control* control_of_row(const Shell& shell, int page, int row);

// Property "Value" ("True" or "False"), "Text" or "text", "Caption". Empty where the control lacks it.
std::string read_property(const Control& control, std::string_view property);
// A property that the control lacks is passed over.
void write_property(Control& control, std::string_view property, std::string_view value);

} // namespace vrk
