// What the terminal sends: one string by hand or in a cycle, a list of strings one by one or in turn, keys as they are
// typed.
#pragma once

#include "shell/shell.h"

#include <string_view>

namespace vrk {

void comDebugSend_Click(Shell& shell);
void comSpreadSendCom_Click(Shell& shell, int row);
void send_next_string(Shell& shell); // of the list; rows without text are passed over

void comAutoSend_Click(Shell& shell);
void comSpreadAutoSend_Click(Shell& shell);
void take_send_cycles(Shell& shell); // of the timers that run, as typed
void stop_automatic_sends(Shell& shell);
void show_automatic_sends(Shell& shell);

// A key typed into the display goes out, where the port is open. Longer names of keys do not.
void send_key(Shell& shell, std::string_view key);

} // namespace vrk
