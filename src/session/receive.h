// The receive event: bytes from the port become frames in the receive buffer. It is the only writer of that buffer.
#pragma once

namespace vrk {

struct Session;

// For each receive event of the port. Below 4800 baud it waits 30 ms first, so that a whole frame can gather; events
// that come in this wait return at once, and the outer one takes their bytes.
void on_receive(Session& session);

// The two paths, with the bytes that wait now.
void receive_isp(Session& session);
void receive_demo(Session& session);

} // namespace vrk
