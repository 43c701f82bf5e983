// What stands still in the window stands at the same place in both languages: a hand that has learnt the one finds
// everything in the other.
#pragma once

#include "shell/shell.h"

#include <QWidget>

namespace vrk {

// Gives each label, button and choice in a part of the window the room that its caption needs in the longer of both
// languages, in the font that it has now.
void keep_room_for_both(const Shell& shell, const QWidget& part);

} // namespace vrk
