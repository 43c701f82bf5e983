// The commands of the script language, by name.
#pragma once

#include "script/runner.h"

#include <string>

namespace vrk::script {

// One line: the command and its arguments, parted by blanks; the last argument takes the rest of the line as it stands.
Runner::Result run_command(Runner& runner, const std::string& line);

// A line a command: name, arguments, what it does.
std::string command_help();

} // namespace vrk::script
