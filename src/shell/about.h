// Which program this is, and what it works on: for the window's title, the box that tells of it, and --version.
#pragma once

#include "shell/shell.h"

#include <string>
#include <string_view>

namespace vrk {

inline constexpr std::string_view program_name = "VRK-ISP"; // over boxes too that have no title of their own

std::string_view program_version(); // of the build, as "1.0.0"

// Program and version, then the code file, the model and the port, as far as there are any. A star behind the file: the
// buffer was changed by hand since.
std::string window_title(Shell& shell);

void mnuAbout_Click(Shell& shell);

} // namespace vrk
