// The panel of a model whose options cannot be written: lines that tell how it leaves the factory.
#pragma once

#include "form/shell.h"

namespace vrk {

void show_fixed_options(Shell& shell); // series 5 to 17

} // namespace vrk
