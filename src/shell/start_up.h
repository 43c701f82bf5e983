// How the program comes up and goes down.
#pragma once

#include "shell/shell.h"

namespace vrk {

// Everything that happens before the window shows: tables, tree, lists, model, buffers. language_is_english is to be
// set before.
void start_up(Shell& shell);

// The user wants to leave. Stops what runs; TimerUnload ends the program when it has wound down: see `unloaded`.
void close_request(Shell& shell);

} // namespace vrk
