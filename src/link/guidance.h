// The page of advice for a chip that does not answer.
#pragma once

#include "form/shell.h"

namespace vrk {

// Timer9: nobody has answered for 4 seconds. Two beeps and a page in textMsg; the calling goes on.
void show_guidance(Shell& shell);

} // namespace vrk
