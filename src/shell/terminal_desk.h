// What the terminal and the monitor know between two events: they share the line, and what comes in goes to both.
#pragma once

#include "monitor/monitor.h"
#include "platform/timer.h"
#include "terminal/terminal.h"

namespace vrk {

struct TerminalDesk {
    explicit TerminalDesk(EventLoop& loop);

    Terminal terminal;
    Monitor monitor;
    FrameScan scan; // of what comes in
    int repeats_left = 0; // that a damaged frame may be asked for
    int spread_current = 0; // row of the list of strings that comes next

    Timer TimerDebug; // a frame is waited for; asks for it again
    Timer TimerDebugDisplay; // shows what has come in
    Timer TimerDebugAutoSend;
    Timer TimerSpreadAutoSend;
};

} // namespace vrk
