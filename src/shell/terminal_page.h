// The terminal's page: its line opened and closed, what comes in shown. One port serves the terminal and the downloads,
// one at a time; a download closes the terminal first.
#pragma once

#include "shell/shell.h"

#include <string>
#include <vector>

namespace vrk {

// Ties the timers and shows the captions of buttons with two states. Once, at the start.
void set_up_terminal(Shell& shell);

// Opens the port with the page's settings, unless it is open. A box tells why it does not open. True: open.
bool terminal_open(Shell& shell);
// Closes it and ends both automatic sends. What was received stays.
void terminal_close(Shell& shell);

void comOpenCOM_Click(Shell& shell);
void terminal_line_Change(Shell& shell); // an open port is closed and opened again
void combDebugCodePage_Click(Shell& shell);
void comDebugClear_Click(Shell& shell, int row); // 0: the display, 1 and 2: the monitor's lists
void comDebugFind_Click(Shell& shell); // selects the next place of the text in the display, or marks that there is none
void comComp_Click(Shell& shell); // what came in against the code buffer, told in textMsg

void comDebugLog_Click(Shell& shell); // asks for a file and begins a log, or ends the one that runs
void set_control_lines(Shell& shell); // as the boxes stand
// The list of devices has changed: the number follows the device that was chosen, and a terminal whose device has come
// back is opened again.
void terminal_ports_Change(Shell& shell, const std::vector<std::string>& paths_before);

void terminal_display_tick(Shell& shell);
void show_terminal_counts(Shell& shell);
void show_terminal_port(Shell& shell); // the device behind the chosen number

} // namespace vrk
