// Files that come by their name, whoever names them: a dialog, the command line.
#pragma once

#include "shell/open_file.h"

#include <string>

namespace vrk {

// A project may be chosen in the dialog of either buffer: it is opened, with its page in view.
void open_if_project(Shell& shell, Chosen chosen);

// As if it had been chosen in the dialog of the code file.
void open_path(Shell& shell, const std::string& path);

} // namespace vrk
