// The receive event: bytes from the port become frames in rx_buffer. It is the only writer of rx_buffer.
#pragma once

#include "form/shell.h"

namespace vrk {

// For each receive event of the port. Below 4800 baud it waits 30 ms first, so that a whole frame can gather; events
// that come in this wait return at once, and the outer one takes their bytes.
void on_comm(Shell& shell);

// The two paths, with the bytes that wait now.
void receive_isp(Shell& shell);
void receive_demo(Shell& shell);

} // namespace vrk
