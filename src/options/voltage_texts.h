// The texts of the low-voltage rows: they depend on the supply of the model, so they are written into its page.
#pragma once

#include "options/option_table.h"

#include "catalog/mcu_record.h"

namespace vrk {

// For the panel of a model.
void write_panel_voltages(OptionTable& table, int page, const McuRecord& record, bool english);

// For the report of a chip, by its stepping letter. Letters without voltages leave the page as it is.
void write_report_voltages(OptionTable& table, int page, char letter, const McuRecord& record, bool english);

} // namespace vrk
