// What the drop-down lists offer.
#pragma once

#include "form/main_form.h"

namespace vrk {

void fill_lists(
    MainForm& form); // once, before anything is chosen; the ports have a list of their own, see refresh_ports

} // namespace vrk
