// The captions of the window, both languages side by side.
#pragma once

#include "form/main_form.h"

namespace vrk {

void apply_captions(MainForm& form);

} // namespace vrk
