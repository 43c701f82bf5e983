// The menu: the files of the last days, what a bench or a workshop does without, the language, and what the program is.
#pragma once

#include "shell/shell.h"

#include <QMenuBar>

namespace vrk {

// Its entries are controls as all others, under their own names; a hand on them goes through the same gate.
void make_menus(QMenuBar& bar, Shell& shell);

} // namespace vrk
