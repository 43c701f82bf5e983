// Keys for what is done all day; each presses the button that is on the screen for it, and the button tells its key.
#pragma once

#include <QWidget>

namespace vrk {

void tie_keys(QWidget& window);

} // namespace vrk
