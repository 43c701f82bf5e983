// A saved setting has changed: half a second after the first change of a burst all of them are written.
#pragma once

#include "shell/shell.h"

namespace vrk {

// A timer that runs goes on running: the last change of a burst does not put the save off.
inline void arm_save(Shell& shell)
{
    if (!shell.Timer3.enabled())
        shell.Timer3.start();
}

} // namespace vrk
