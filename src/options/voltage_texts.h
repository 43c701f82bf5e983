// The texts of the low-voltage rows: they depend on the supply of the model, so they are written into its page.
#pragma once

#include "form/shell.h"

namespace vrk {

// For the panel of the selected model.
void write_panel_voltages(Shell& shell, int page);

// For the report of a chip, by its stepping letter. Letters without voltages leave the page as it is.
void write_report_voltages(Shell& shell, int page, char letter, const McuRecord& record);

} // namespace vrk
