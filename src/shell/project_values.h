// What a project keeps of the controls, and the way back.
#pragma once

#include "image/project_format.h"
#include "shell/shell.h"

#include <span>
#include <string_view>
#include <vector>

namespace vrk {

// The options in the order of the file. A model has those of its option page.
std::span<const std::string_view> project_option_keys();

// The keys of a file from before versions were written, in its order, by option page of the model: the two layouts of
// that time. Empty for the later pages, whose files have the option keys of today.
std::span<const std::string_view> old_project_keys(int page);

// Of the selected model. Takes a snapshot of the panel.
std::vector<ProjectValue> project_values(Shell& shell);

// Writes the values to their controls; the handlers of these do not run. A key that the model has no use for and a
// value that its control cannot take are passed over. The model itself is not written: selecting it comes before.
void apply_project_values(Shell& shell, const Project& project);

} // namespace vrk
