// Projects: a whole job saved to one file and taken from it again, with the panel locked, so that nobody at the line
// changes anything by accident.
#pragma once

#include "form/main_form.h"

#include <string>
#include <string_view>

namespace vrk {

void comSaveBatchFile_Click(MainForm& form);
void comOpenBatchFile_Click(MainForm& form);
void comLockOptions_Click(MainForm& form);
void comUnlockOptions_Click(MainForm& form);
void Command1_Click(MainForm& form); // tells what projects are for

// The user is told of a file that cannot be written; what was there before is whole then.
void save_project(MainForm& form, const std::string& path);

// Until it is clear that the file is a project of a model in the catalogue nothing has changed but the name shown.
void open_project(MainForm& form, const std::string& path);
void take_project(MainForm& form, std::string_view text); // the same from what was read

} // namespace vrk
