#include "session/shared_texts.h"

#include "platform/text_number.h"

namespace vrk {

namespace {

constexpr Text connection_failed = {"Connection failed. / 握手失败 (End: ", "Connection failed. (End: "};
constexpr Text port_gone = {"串口已断开。", "The serial port is gone.", Tone::bad};

} // namespace

void report_stop(Report& report)
{
    report.beep(1);
    report.say(stop_text);
}

void report_failed(const Session& session, Report& report, int beeps, const Line& text)
{
    report.beep(beeps);
    if (session.port_gone())
        report.say(port_gone);
    report.say(text.as(Tone::bad));
}

void report_connection_failed(const Session& session, Report& report, int beeps)
{
    report_failed(session, report, beeps, with_end_time(connection_failed, session.loop));
}

Line with_end_time(const Text& text, const EventLoop& loop) { return Line{text} + clock_text(loop.wall_time()) + ")"; }

std::string minutes_since(const EventLoop& loop, std::int64_t start_us)
{
    return minutes_text((loop.now_us() - start_us) / 1'000'000);
}

} // namespace vrk
