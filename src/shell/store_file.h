// What goes to files of the user's: a range of the code buffer, and anything else that is to stay whole there.
#pragma once

#include "report/text.h"
#include "shell/shell.h"

#include <cstdint>
#include <span>
#include <string>

namespace vrk {

// Takes start and length from the page, asks for the file and writes it; a range or a file that cannot be is told.
void comStoreFile_Click(Shell& shell);

// Writes a file whole. False: it is not surely on the disk, and the user has been told; `unchanged` where what stood
// there still does.
bool write_or_tell(Shell& shell, const std::string& path, std::span<const std::uint8_t> bytes, const Text& unchanged);

} // namespace vrk
