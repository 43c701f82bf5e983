// The panel of a model whose options cannot be written: lines that tell how it leaves the factory.
#pragma once

#include "catalog/mcu_record.h"

#include <string>
#include <vector>

namespace vrk {

// At most seven, one a strip; an empty one leaves its strip out. Series 5 to 17, none for the others. Only what is
// known to be true of the whole family is told; otherwise that the options are fixed, and no more.
std::vector<std::string> fixed_option_lines(const McuRecord& record, bool english);

} // namespace vrk
