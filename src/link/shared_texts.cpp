#include "link/shared_texts.h"

#include "platform/text_number.h"

namespace vrk {

namespace {

constexpr Text connection_failed = {"Connection failed. / 握手失败 (End: ", "Connection failed. (End: "};

}

void report_stop(Report& report)
{
    report.beep(1);
    report.say(stop_text);
}

void report_connection_failed(const EventLoop& loop, Report& report, int beeps)
{
    report.beep(beeps);
    report.say(with_end_time(connection_failed, loop));
}

Line with_end_time(const Text& text, const EventLoop& loop) { return Line{text} + clock_text(loop.wall_time()) + ")"; }

} // namespace vrk
