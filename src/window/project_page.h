// The project page: open, save, lock.
#pragma once

#include "window/binder.h"

namespace vrk {

QWidget* make_project_page(Binder& binder);

} // namespace vrk
