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
    std::size_t search_from = 0; // byte of the display, behind the place that was found last

    std::string chosen_port; // the device behind the number, also while it is not there
    std::string lost_port; // the device that went while the terminal had it open; opened again when it comes back

    Timer TimerDebug; // a frame is waited for; asks for it again
    Timer TimerDebugDisplay; // shows what has come in
    Timer TimerDebugAutoSend;
    Timer TimerSpreadAutoSend;
    Timer TimerDebugPort; // while the port is open: is it still there, and what do its control lines say
};

} // namespace vrk
