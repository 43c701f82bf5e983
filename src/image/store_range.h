// Whether a range of the code buffer can be stored as a binary file.
#pragma once

#include "report/text.h"

#include <cstdint>

namespace vrk {

// What is wrong with a range, in the order in which it is looked at. Nothing above FFFF can be stored.
enum class StoreFault { none, start_too_small, start_too_big, too_short, too_long };
StoreFault store_fault(std::int64_t start, std::int64_t length);
const Text& store_text(StoreFault fault); // of a fault, not of none

} // namespace vrk
