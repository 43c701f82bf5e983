// The look-up by name as the program does it: with the record filled, and the user told if there is no such model.
#pragma once

#include "catalog/rows.h"
#include "form/shell.h"

namespace vrk {

// Fills `record` and what is set beside it. Answers the name, or an empty text after a message box; the record is then
// as it was.
std::string find_mcu_by_name(Shell& shell, std::string_view name, McuRecord& record);

} // namespace vrk
