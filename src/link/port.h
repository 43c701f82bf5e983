// The one serial port as the link uses it: opening, closing, emptying, sending.
#pragma once

#include "link/frame.h"

#include "form/shell.h"

namespace vrk {

// The model whose rules the wire follows: the selected one until a status frame names a chip that the catalogue knows.
const McuRecord& wire_record(const Shell& shell);
// The check that frames carry in the present mode.
Check wire_check(const Shell& shell);
// The id that the target sent, high digits and low; empty before a status frame.
std::string reported_id(const Shell& shell);

// The only road to Settings for target traffic: adds the parity of link_parity_on and link_parity_even.
bool setMSCommSettings(Shell& shell, const std::string& baud);
// The port of combCommPort becomes the one that open takes.
void set_comm_port(Shell& shell);
bool open_link(Shell& shell); // true: open
bool close_link(Shell& shell); // true: closed
void flush_link(Shell& shell); // all that has come or waits to go is thrown away, and the frame in hand
void reset_port_properties(Shell& shell);
void show_port_open(Shell& shell, bool open);

// Sends one frame: Output in one piece, one turn of the event loop if bytes still queue, 3 ms.
void send_frame(Shell& shell, std::span<const std::uint8_t> frame);
// Before a send whose reply matters: forgets the last reply and gives its trailing bytes 5 ms to settle.
void expect_reply(Shell& shell);

// False: the code has no short shell, or the port cannot be opened.
bool send_short_command(Shell& shell, std::uint8_t code);
// Sends a model frame with Timer1 as the time-out of its reply.
void board_send_command(Shell& shell, std::uint8_t code, int timeout_ms, std::uint8_t parameter);
// Waits for the reply to it: good, bad, timed out or stopped. Answers reply_ok.
bool wait_model_reply(Shell& shell);
// Sends a 5A A5 command after the queue has drained and 20 ms have passed.
void send_demo_command(Shell& shell, std::uint8_t code);

// Copies the received frame into reply_frame; answers the bytes of it.
std::span<const std::uint8_t> read_frame(Shell& shell);

} // namespace vrk
