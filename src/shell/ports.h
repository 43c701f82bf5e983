// The list of ports, and which one is chosen. The choice goes by the path: a port that is gone leaves the list without
// a choice, never with another port, and when it comes back it is chosen again.
#pragma once

#include "shell/shell.h"

#include <string>

namespace vrk {

void refresh_ports(Shell& shell); // after a device has come or gone
void choose_port(Shell& shell, const std::string& path); // whether it is there or not; empty: the first one
// Into the list, in front, whether the system knows it or not, and chosen.
void add_port(Shell& shell, const std::string& path);
void comOtherPort_Click(Shell& shell); // names one in a file dialog
const std::string& chosen_port(Shell& shell); // the path of the choice, or of the last one where its port is gone

} // namespace vrk
