// What a project keeps of the controls, and the way back.
#pragma once

#include "image/project_format.h"
#include "shell/shell.h"

#include <vector>

namespace vrk {

// Of the selected model. Takes a snapshot of the panel.
std::vector<ProjectValue> project_values(Shell& shell);

// Writes the values to their controls; the handlers of these do not run. A key that the model has no use for and a
// value that its control cannot take are passed over. The model itself is not written: selecting it comes before.
void apply_project_values(Shell& shell, const Project& project);

} // namespace vrk
