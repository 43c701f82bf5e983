// What more than one chapter says when the user has stopped it or the chip fell silent.
#pragma once

#include "platform/event_loop.h"
#include "report/report.h"

namespace vrk {

void report_stop(Report& report); // one beep and the stop text
// Beeps, then "Connection failed. (End: hh:mm:ss)".
void report_connection_failed(const EventLoop& loop, Report& report, int beeps);

// "text" + the time of day + ")".
Line with_end_time(const Text& text, const EventLoop& loop);

constexpr Text number_outside = {"自动增量的数值在下载范围之外，未下载。",
    "The auto increment number lies outside of what a download writes. Nothing was programmed."};
constexpr Text stop_text = {"Operation stopped. / 操作被停止.", "Operation stopped. "};

} // namespace vrk
