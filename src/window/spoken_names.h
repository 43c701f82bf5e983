// What a screen reader says of a control that bears no words itself: the label beside it, or words of its own. A choice
// says the question along with the answer.
#pragma once

#include "window/binder.h"

namespace vrk {

void give_spoken_names(Binder& binder, QWidget& window); // once all widgets are made

} // namespace vrk
