// The files and projects that were opened last, the newest first: in the menu, and in the settings for the next run.
#pragma once

#include "shell/shell.h"

#include <string>

namespace vrk {

enum class Recent { file, project };
constexpr int index_of(Recent list) { return static_cast<int>(list); }

void load_recent(Shell& shell); // from the settings

// It has been opened, or a project saved: it stands on top of its list now, and the last one of a full list goes.
void note_recent(Shell& shell, Recent list, const std::string& path);

// Opens the entry. A file that is gone is told, and leaves the list.
void mnuRecentFile_Click(Shell& shell, int index); // into the buffer in view
void mnuRecentProject_Click(Shell& shell, int index);

} // namespace vrk
