// The pages of the custom download, of the off-line board and of the downloader in user code.
#pragma once

#include "window/binder.h"

namespace vrk {

QWidget* make_user_command_page(Binder& binder);
QWidget* make_board_page(Binder& binder);
QWidget* make_demo_page(Binder& binder);
QWidget* make_hardware_page(Binder& binder);

} // namespace vrk
