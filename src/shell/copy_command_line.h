// The job as it stands, as the words of the command line that do the same.
#pragma once

#include "recipe/recipe.h"
#include "shell/shell.h"

namespace vrk {

// Of the model that is selected, the files that are open and what is chosen. A project is named by its file.
Recipe recipe_on_screen(Shell& shell);

// Into the clipboard and into the report. A job that its words would not make again - its bytes were edited, several
// files lie over each other, a file has changed since - is not copied, and the user is told what to do.
void mnuCopyCommandLine_Click(Shell& shell);

} // namespace vrk
