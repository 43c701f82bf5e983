// The pins that the boot code can drive for the user: one to steer a transceiver, one to feed an external watchdog.
#pragma once

#include <string>
#include <vector>

namespace vrk {

std::vector<std::string> option_pin_items();

} // namespace vrk
