#include "inapp/user_command.h"

#include "session/shared_texts.h"

#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr int behind_command_ms = 20;
constexpr std::int32_t slowest_baud = 1;

constexpr Text port_failed = {
    "Open COM port failure! / 打开串口失败!\nThe COM port opened by another Program or no the COM port.\n"
    "Chinese:串口已被其它程序打开或该串口不存在。",
    "Open COM port failed!\nThe COM port is opened by another Program or the COM port does not exist."};
constexpr Text no_such_line = {"该串口不支持所选的参数。", "The COM port does not take these settings."};
constexpr Text box_title = {"  调试用串口     ", ""};

// What is queued goes out, unless the talk ends first.
void let_queue_drain(Session& session)
{
    while (session.port.queued() > 0 && !session.is_over())
        session.loop.yield();
}

} // namespace

std::optional<LineSettings> user_line(
    std::string_view baud, std::string_view parity, std::string_view data_bits, std::string_view stop_bits)
{
    LineSettings line;
    line.baud = static_cast<std::int32_t>(number_in(baud));
    const std::string_view kind = trimmed(parity);
    line.parity = kind.starts_with('E') ? Parity::even : kind.starts_with('O') ? Parity::odd : Parity::none;
    line.data_bits = static_cast<int>(number_in(data_bits));
    const std::string_view stop = trimmed(stop_bits);
    line.stop_bits = stop == "1" ? 1 : 2;
    const bool possible = line.baud >= slowest_baud && line.data_bits >= 5 && line.data_bits <= 8 &&
        (stop != "1.5" || line.data_bits == 5);
    return possible ? std::optional{line} : std::nullopt;
}

bool open_user_line(Session& session, const std::optional<LineSettings>& line, Report& report)
{
    session.close();
    if (!line || !session.port.set_line(*line)) {
        report.show_box(no_such_line, box_title);
        return false;
    }
    const bool opened = session.open();
    session.drop_counts();
    report.port_is_open(opened);
    if (!opened) {
        report_failed(session, report, 3, port_failed);
        report_refusal(session, report);
    }
    return opened;
}

Result send_user_command(Session& session, const UserCommand& command, Report& report)
{
    if (!open_user_line(session, command.line, report))
        return session.port_gone() ? Result::port_gone : Result::no_port;
    let_queue_drain(session);
    session.port.send(command.bytes);
    let_queue_drain(session);
    // A driver's queue is empty before the wire is: what the bytes need there has to pass before the port may close.
    session.pause(std::max(behind_command_ms, session.leaving_ms(command.bytes.size())));
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    if (session.port_gone()) {
        report_failed(session, report, 3, port_failed);
        return Result::port_gone;
    }
    return Result::good;
}

} // namespace vrk
