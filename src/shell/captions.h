// The captions of the window, both languages side by side.
#pragma once

#include "shell/shell.h"

namespace vrk {

void apply_captions(Shell& shell);

} // namespace vrk
