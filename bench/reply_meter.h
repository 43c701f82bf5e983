// The host's own share of an exchange: from the moment that its poll() has come back for the last bytes of a reply
// until it hands the next data frame to the kernel. Taken where the process calls the kernel, so it holds all that the
// program and its event loop do in between, for a bare poll() loop as for the window.
//
// Not taken by the far end: that would measure how long the machine takes to wake up a sleeping core, twice for each
// frame. In a virtual machine this is several times of what the host has any say in, and differs from hour to hour.
#pragma once

namespace bench {

void begin_metering();
double end_metering_us(); // the median since begin_metering

} // namespace bench
