// What more than one chapter says when the user has stopped it, the chip fell silent or the port has gone.
#pragma once

#include "session/session.h"

#include "report/report.h"

namespace vrk {

void report_stop(Report& report); // one beep and the stop text
// How a stage failed: beeps and the text; in front of it that the port is gone, where that is the reason.
void report_failed(const Session& session, Report& report, int beeps, const Line& text);
// Behind the text that the port could not be opened: why, and what helps, where the system tells.
void report_refusal(const Session& session, Report& report);
Line refusal_text(const Port& port); // the same as a line; empty: the system tells nothing
void report_connection_failed(
    const Session& session, Report& report, int beeps); // "Connection failed. (End: hh:mm:ss)"

// "text" + the time of day + ")".
Line with_end_time(const Text& text, const EventLoop& loop);

constexpr Text number_outside = {"自动增量的数值在下载范围之外，未下载。",
    "The auto increment number lies outside of what a download writes. Nothing was programmed."};
std::string minutes_since(const EventLoop& loop, std::int64_t start_us); // "mm:ss"; both by the loop's clock

constexpr Text stop_text = {"Operation stopped. / 操作被停止.", "Operation stopped. "};

} // namespace vrk
