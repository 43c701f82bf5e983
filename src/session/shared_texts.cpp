#include "session/shared_texts.h"

#include "platform/text_number.h"

namespace vrk {

namespace {

constexpr Text connection_failed = {"Connection failed. / 握手失败 (End: ", "Connection failed. (End: "};
constexpr Text no_permission = {"没有权限打开 ", "No permission to open "};
constexpr Text join_group = {"。请把用户加入 ", ". Put the user into the group "};
constexpr Text with_command = {" 组, 然后重新登录: sudo usermod -aG ", " and log in anew: sudo usermod -aG "};
constexpr Text used_by = {" 正被使用: ", " is in use by "};
constexpr Text used_by_another = {"另一个程序", "another program"};
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

Line refusal_text(const Port& port)
{
    const PortRefusal why = port.refusal();
    switch (why.kind) {
    case PortRefusal::Kind::no_permission:
        if (why.group.empty() || why.group == "root") // that group is for nobody to join
            return Line{no_permission} + port.path;
        return Line{no_permission} + port.path + join_group + why.group + with_command + (why.group + " $USER");
    case PortRefusal::Kind::in_use:
        return Line{port.path} + used_by + (why.holder.empty() ? Line{used_by_another} : Line{why.holder});
    case PortRefusal::Kind::unknown:
        break;
    }
    return {};
}

void report_refusal(const Session& session, Report& report)
{
    const Line why = refusal_text(session.port);
    if (!why.en.empty())
        report.say(why);
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
