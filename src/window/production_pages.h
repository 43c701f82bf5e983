// The tool pages of a production run: serial numbers, and a range of the code buffer as a file.
#pragma once

#include "window/binder.h"

namespace vrk {

QWidget* make_increase_page(Binder& binder);
QWidget* make_store_page(Binder& binder);

} // namespace vrk
