// A range of the code buffer goes to a binary file.
#pragma once

#include "form/shell.h"

#include <cstdint>

namespace vrk {

// What is wrong with a range, in the order in which it is looked at. Nothing above FFFF can be stored.
enum class StoreFault { none, start_too_small, start_too_big, too_short, too_long };
StoreFault store_fault(std::int64_t start, std::int64_t length);

// Takes start and length from the page, asks for the file and writes it; a range or a file that cannot be is told.
void comStoreFile_Click(Shell& shell);

} // namespace vrk
