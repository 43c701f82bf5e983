// The pages of the terminal and of the monitor.
#pragma once

#include "window/binder.h"

namespace vrk {

QWidget* make_terminal_page(Binder& binder);
QWidget* make_registers_page(Binder& binder);
QWidget* make_memory_page(Binder& binder);

} // namespace vrk
