// The pins that the boot code can drive for the user: one to steer a transceiver, one to feed an external watchdog.
#pragma once

#include <string>
#include <vector>

namespace vrk {

std::vector<std::string> option_pin_items();
std::vector<std::string> all_pin_items(); // "P0.0" to "P3.7": of those the boot loader feeds a watchdog by one

} // namespace vrk
