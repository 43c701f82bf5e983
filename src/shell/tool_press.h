// The buttons that start the tools' jobs.
#pragma once

#include "shell/shell.h"

namespace vrk {

// The page of the board with its start values, the controls of a production line hidden.
void set_up_tools(Shell& shell);
void show_production_controls(Shell& shell); // as their menu entry is ticked

void comSendUserCode_Click(Shell& shell); // a command to user code, then a download
void com_Demo_DownLoad_Click(Shell& shell, bool repeat); // through a downloader in user code
void comTJXZ_Click(Shell& shell); // everything into the off-line board
void Read24C512_Click(Shell& shell); // the board's serial memory into the code buffer

} // namespace vrk
