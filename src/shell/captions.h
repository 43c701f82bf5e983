// The captions of the window, both languages side by side.
#pragma once

#include "shell/shell.h"

namespace vrk {

void apply_captions(Shell& shell);

// Null: it has none, or one that changes with what is worked on.
const Text* caption_of(const Shell& shell, const Control& control);

} // namespace vrk
