// From silence to a known chip at the fastest baud.
#pragma once

#include "form/shell.h"

#include <string>

namespace vrk {

enum class Purpose { download, read_only };

// The whole connection with its messages. target.target_ok tells the result; after a failure the buttons are free.
void connect_target(Shell& shell, Purpose purpose);

// Waits for power-up without limit, takes the status frame and negotiates the baud. True: it reached its end; `baud`
// then holds the speed of the line.
bool handshake(Shell& shell, Purpose purpose, std::string& baud);

// Command 50, up to three times; fills the option bytes of the chip. options_read_ok tells the result.
void read_status(Shell& shell);

} // namespace vrk
