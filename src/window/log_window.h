// The record of every chip, in a window of its own: what is looked for, a table, the yield, good and bad by hour, and
// the way out as a file.
#pragma once

#include <QWidget>

namespace vrk {

struct Shell;

// Over the window given, beside whatever else goes on. The user is told where there are no records.
void show_log(Shell& shell, QWidget* parent);

} // namespace vrk
