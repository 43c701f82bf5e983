// Keys for what is done all day; each presses the button that is on the screen for it, and the button tells its key.
// And keys that go to a step or a strip: captions are shown letter by letter, so none of them can underline one.
#pragma once

#include <QWidget>

namespace vrk {

void tie_keys(QWidget& window);

} // namespace vrk
