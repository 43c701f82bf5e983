// From the option panel to values: what is chosen, and the bytes that it asks for.
#pragma once

#include "options/codec.h"
#include "shell/shell.h"

namespace vrk {

// The state of every choice into the snapshot column of the selected model's page.
void snapshot_controls(Shell& shell);

OptionChoices read_option_choices(Shell& shell); // takes a snapshot

} // namespace vrk
