// What the drop-down lists offer.
#pragma once

#include "shell/shell.h"

namespace vrk {

void fill_lists(Shell& shell); // once, before anything is chosen; the ports have a list of their own, see refresh_ports

} // namespace vrk
