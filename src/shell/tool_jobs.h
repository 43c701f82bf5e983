// What stands on the tools' pages becomes a job: for the off-line board, for a downloader in user code, for a command
// to user code.
#pragma once

#include "board/board_job.h"
#include "inapp/demo.h"
#include "inapp/user_command.h"
#include "shell/shell.h"

namespace vrk {

// All take a snapshot: what is on the screen later does not reach a board or a chip.
BoardJob make_board_job(Shell& shell);
DemoJob make_demo_job(Shell& shell);
UserCommand make_user_command(const Shell& shell); // of the page of the custom download
LineChoice user_port(const Shell& shell); // of step 3, for lines that are set otherwise

} // namespace vrk
