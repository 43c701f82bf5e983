// Who stands in the way of opening a port.
#pragma once

#include "platform/serial_port.h"

#include <string>

namespace vrk {

// Of a device that is there and was just refused. `taken`: the driver has said that it cannot be had now.
PortRefusal why_refused(const std::string& path, bool taken);

} // namespace vrk
