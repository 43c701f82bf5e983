// The panel of a model whose options cannot be written: lines that tell how it leaves the factory.
#pragma once

#include "options/option_table.h"

#include "catalog/mcu_record.h"

#include <string>
#include <vector>

namespace vrk {

// At most seven, one a strip; an empty one leaves its strip out. Series 5 to 17, none for the others. Writes the
// voltages of the model into its page.
std::vector<std::string> fixed_option_lines(OptionTable& table, const McuRecord& record, bool english);

} // namespace vrk
