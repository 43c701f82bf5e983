// A range of the code buffer goes to a binary file.
#pragma once

#include "shell/shell.h"

namespace vrk {

// Takes start and length from the page, asks for the file and writes it; a range or a file that cannot be is told.
void comStoreFile_Click(Shell& shell);

} // namespace vrk
