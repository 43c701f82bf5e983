#include "session/program.h"

#include "session/image_writes.h"
#include "session/shared_texts.h"
#include "session/write_range.h"

#include "catalog/attributes.h"
#include "options/status_frame.h"
#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::uint8_t code_taken = 0x8D; // the newer chips' answer to the end-of-code command

constexpr Text stopped = {"操作被停止.", "Operation stopped. "};
constexpr Text failed = {"下载失败 (End: ", "Programing failed. (End: "};
constexpr Text failed_hint = {"请尝试用稍低的波特率下载。", "Try to use the lower baud. ", Tone::advice};
constexpr Text options_left = {"程序已下载，但 Options 未修改。",
    "The code has already programed, but the Options haven't been modified.", Tone::bad};

bool write_images(Session& session, const ImageJob& job, Report& report)
{
    std::vector<ImageWrite> writes = image_writes(job, session.model(), number_in(session.chip.fw_version));
    const auto bytes_of = [](const WriteRange& range) { return range.last - range.first + 1; };
    std::int32_t all = 0;
    for (const ImageWrite& write : writes)
        all += bytes_of(write.range);
    std::int32_t before = 0;
    for (ImageWrite& write : writes) {
        write.range.before = before;
        before += bytes_of(write.range);
        write.range.behind = all - before;
    }
    return std::ranges::all_of(
        writes, [&](const ImageWrite& write) { return write_range(session, report, write.range, write.image, true); });
}

Result failed_by(const Session& session, Report& report)
{
    if (session.stop_requested) {
        report.beep(2);
        report.say(stopped);
        return Result::stopped;
    }
    report_failed(session, report, 3, with_end_time(failed, session.loop));
    if (!session.port_gone())
        report.say(failed_hint);
    return Result::programming_failed;
}

// The newer chips confirm the whole code. A silent one is left to the option stage to notice; where the user has
// stopped or the port has gone nobody has noticed anything.
Result confirm_code(Session& session, Report& report)
{
    const bool answered = session.ask_model(command::end_of_code, 200, 0);
    if (answered && session.rx.code() != code_taken) {
        report.beep(2);
        report.say(options_left);
        return Result::options_refused;
    }
    return answered || !session.is_over() ? Result::good : failed_by(session, report);
}

void say_beginning(const Session& session, Report& report)
{
    constexpr Text programming = {"正在下载... ( 开始时间: ", "Programming... ( Begin: "};
    report.say(Line{programming} + clock_text(session.loop.wall_time()) + " )");
}

} // namespace

Result program_all(Session& session, const ImageJob& job, Report& report)
{
    session.program_ok = false;
    session.programmed.clear();
    session.program_started_us = session.loop.now_us();
    report.enter(Stage::writing);
    say_beginning(session, report);
    if (!write_images(session, job, report))
        return failed_by(session, report);
    const McuRecord& record = session.model();
    if (!record.cap_no_option_write && record.cap_new_protocol) {
        if (const Result confirmed = confirm_code(session, report); confirmed != Result::good)
            return confirmed;
    }
    session.program_ok = true;
    return Result::good;
}

} // namespace vrk
