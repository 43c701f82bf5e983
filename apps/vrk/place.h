// Where a subcommand talks to a chip: a port of the machine in real time, or a simulated line. Either stops when
// somebody interrupts the program.
#pragma once

#include "vrk/talk_options.h"

#include "platform/port.h"

#include <functional>

namespace vrk {

struct Place {
    EventLoop& loop;
    Port& port;
    std::string port_path;
    std::function<void(const McuRecord&)> chip_awaited; // before each chip is called
    std::function<void(std::function<void()>)> on_interrupt; // tells what an interrupt does
};

// Makes the place that the options ask for and does its work there; gives its status, or that of a port that there is
// none of.
int at_place(const TalkOptions& options, const std::function<int(Place&, Teller&)>& work);

} // namespace vrk
