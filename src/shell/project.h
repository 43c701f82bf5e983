// Projects: a whole job saved to one file and taken from it again, with the panel locked, so that nobody at the line
// changes anything by accident.
#pragma once

#include "shell/shell.h"

#include <string>
#include <string_view>

namespace vrk {

void comSaveBatchFile_Click(Shell& shell);
void comOpenBatchFile_Click(Shell& shell);
void comLockOptions_Click(Shell& shell);
void comUnlockOptions_Click(Shell& shell);

// A path without a suffix gets that of projects. The user is told of a file that cannot be written; what was there
// before is whole then.
void save_project(Shell& shell, const std::string& path);

// Until it is clear that the file is a project of a model in the catalogue nothing has changed but the name shown.
void open_project(Shell& shell, const std::string& path);
bool take_project(Shell& shell, std::string_view text); // the same from what was read; false: nothing has changed

} // namespace vrk
