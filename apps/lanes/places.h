// Where an adapter is plugged in. A lane is tied to the place and not to the device's number, so that it stays the same
// fixture whatever was plugged in first today.
#pragma once

#include <QString>

namespace vrk::lanes {

// The name of the place that leads to the device, by the system's list of places; the device itself where it has none.
QString place_of(const QString& device, const QString& places = "/dev/serial/by-path");

} // namespace vrk::lanes
