// What every stage says when the user has stopped it or when it failed.
#pragma once

#include "form/messages.h"

namespace vrk {

void report_stop(Shell& shell); // one beep and the stop text
// Beeps, then "Connection failed. (End: hh:mm:ss)".
void report_connection_failed(Shell& shell, int beeps);

// "text" + the time of day + ")".
void append_with_end_time(Shell& shell, const Text& text);

constexpr Text stop_text = {"Operation stopped. / 操作被停止.", "Operation stopped. "};

} // namespace vrk
