// The monitor's two pages: frames found in what the terminal receives, shown in the lists and answered.
#pragma once

#include "shell/shell.h"

#include <cstdint>
#include <vector>

namespace vrk {

// Around each burst of bytes: the wait for a repeated frame stops, and goes on where a frame is not whole.
void begin_monitor_burst(Shell& shell);
void look_for_monitor_frames(Shell& shell, const std::vector<std::uint8_t>& bytes);
void end_monitor_burst(Shell& shell);

void TimerDebug_Timer(Shell& shell); // a frame has not come, or not well: asks for it again
void comDebugContinue_Click(Shell& shell);
void clear_monitor(Shell& shell); // the lists of the selected model, blank

} // namespace vrk
