// A serial port as a hand names it: by its path, by its name under by-id, or by the serial number of its adapter.
#pragma once

#include "platform/serial_port.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vrk {

struct NoPort {
    std::string why;
};

// The path to open. A path that leads nowhere is one all the same: opening it tells. `by_id`: the folder of the
// system's names that stay with an adapter.
std::variant<std::string, NoPort> path_of_port(
    std::string_view word, const std::vector<PortInfo>& ports, const std::string& by_id);

inline constexpr const char* by_id_folder = "/dev/serial/by-id";

} // namespace vrk
