// Is the chip on the wire the model that the user selected?
#pragma once

#include "form/shell.h"

namespace vrk {

// By the stepping letter: the family, and where the letter says so the id, or the size. A letter without a rule matches.
bool model_matches(const Shell& shell);

// The same with its consequences: a mismatch beeps, is said in the report and in a box, and the code file has to be
// opened again, since it was meant for another chip.
bool model_check(Shell& shell);

} // namespace vrk
