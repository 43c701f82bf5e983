// Ctrl-C, and whoever ends the program: taken as a press of the stop button. A second one ends the program at once.
#pragma once

#include <functional>

namespace vrk {

void catch_interrupts(); // SIGINT, SIGTERM and the terminal's end, from here on
bool was_interrupted();
// Called inside a turn of Qt's event loop when one has come.
void on_interrupt(std::function<void()> act);

} // namespace vrk
