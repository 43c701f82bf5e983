#include "link/sequencer.h"

#include "link/erase.h"
#include "link/handshake.h"
#include "link/option_commit.h"
#include "link/rc_test.h"

#include "catalog/attributes.h"
#include "image/download_plan.h"
#include "options/status_frame.h"
#include "platform/text_number.h"
#include "session/image_writes.h"
#include "session/program.h"
#include "session/shared_texts.h"
#include "session/write_range.h"

namespace vrk {

namespace {

constexpr double first_version_that_erases = 0.2; // every firmware but the very first can

constexpr Text firmware_too_old = {
    "", "Sorry, the current program does not support the MCU or Firmware Version is too low."};
constexpr Text block_1_guarded = {"Chinese:因为由 block1 对 block0 编程已被禁止, 所以不能继续下载程序。",
    "Because Block1 to write Block0 is disable, so program can not continue.", Tone::bad};
constexpr Text file_overflows = {"程序文件超出此 MCU 固件下载范围, 超出部分不下载。 ",
    "The Program Code and EEPROM data is too big.\nThe exceeding part won't program.", Tone::advice};
constexpr Text number_left_out = {
    "自动增量的数值没有写入 MCU。", "The auto increment number was not programmed.", Tone::bad};
constexpr Text erase_failed = {"擦除失败 (End: ", "Erasing MCU failed. (End: "};
constexpr Text erase_failed_hint = {
    "Try to use the lower baud. / 请尝试用稍低的波特率下载。", "Try to use the lower baud.", Tone::advice};
constexpr Text read_ok = {"读选项成功.", "Reading Options OK. ", Tone::good};
constexpr Text version_read_ok = {"读版本号成功.", "Read MCU Firmware Version OK.", Tone::good};
constexpr Text read_failed = {"读选项失败.", "Reading Options failed!.", Tone::bad};

// The English edition wants version 4.0 up to letter C and 5.0 behind it; the versions compare as text. A chip that has
// told no version is not supported either.
bool firmware_is_supported(const ChipFacts& chip, const Job& job)
{
    return !job.english || chip.fw_version >= (chip.fw_letter <= "C" ? "4.0" : "5.0");
}

bool block_1_is_guarded(const Session& session, const Job& job)
{
    return job.guards_block_1 && block_bytes(session.model()) == write_chunk;
}

void make_plan(Session& session, const Job& job, Report& report)
{
    const ChipFacts& chip = session.chip;
    const PlannedDownload planned = build_download_plan(job.code.view_high, session.connected, chip.fw_letter,
        number_in(chip.fw_version), Option_Orde(chip.fw_letter, chip.fw_version));
    session.plan = planned.plan;
    if (!planned.overflows)
        return;
    report.beep(2);
    report.say(file_overflows);
}

Result erase_stage(Session& session, Report& report)
{
    if (number_in(session.chip.fw_version) <= first_version_that_erases)
        return Result::good;
    const bool erased = erase_chip(session, report);
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    if (erased)
        return Result::good;
    report_failed(session, report, 3, with_end_time(erase_failed, session.loop));
    if (!session.port_gone())
        report.say(erase_failed_hint);
    return Result::erase_failed;
}

// The chip writes the last block out before it takes options.
void settle(Session& session, Report& report)
{
    session.wait(session.line.is_one_speed() ? 1000 : 100);
    report.enter(Stage::settling);
}

Result option_stage(Session& session, const Job& job, Report& report)
{
    const McuRecord& record = session.model();
    if (record.cap_all_flash_ap || record.cap_no_option_write || record.series == 1)
        return Result::good;
    report.enter(Stage::options);
    return commit_options(session, job, report);
}

// A stage that fell silent because its port has gone says so in its result.
Result reason_of(const Session& session, Result result)
{
    const bool fell_silent = result == Result::no_answer || result == Result::erase_failed ||
        result == Result::programming_failed || result == Result::options_failed;
    return fell_silent && session.port_gone() ? Result::port_gone : result;
}

// The effective length of a file ends its writing, and a number does not make it longer. What the press could not know
// is the boot loader's version and the model that its id stands for.
bool numbers_will_be_written(const Session& session, const Job& job)
{
    return vrk::numbers_will_be_written(job, session.model(), number_in(session.chip.fw_version));
}

Result tell_download(Session& session, const Job& job, Report& report)
{
    report.enter(Stage::calling);
    const Result connected = connect_target(session, job, Purpose::download, report);
    if (session.stop_requested && connected == Result::good) {
        report_stop(report); // it came too late for the connection to say so
        return Result::stopped;
    }
    if (session.stop_requested)
        return connected; // what has been told stands, whenever the stop came
    if (!firmware_is_supported(session.chip, job)) {
        report.show_box(firmware_too_old);
        return connected == Result::good ? Result::old_firmware : connected;
    }
    if (connected != Result::good)
        return connected;
    if (block_1_is_guarded(session, job)) {
        report.beep(3);
        report.say(block_1_guarded);
        return Result::guarded;
    }

    if (!numbers_will_be_written(session, job)) {
        report.show_box(number_outside);
        return Result::number_outside;
    }
    if (!report.may_erase())
        return Result::refused;
    make_plan(session, job, report);
    if (const Result erased = erase_stage(session, report); erased != Result::good)
        return erased;
    if (const Result programmed = program_all(session, job, report); programmed != Result::good)
        return programmed;
    if (!all_hold(session.programmed, job.numbers)) { // the chip's own boot block stood in the way
        report.beep(3);
        report.say(number_left_out);
        return Result::number_outside;
    }
    settle(session, report);
    if (const Result committed = option_stage(session, job, report); committed != Result::good)
        return committed;
    return job.calibrate_rc && !is_near_target(session.rc) ? Result::off_frequency : Result::good;
}

} // namespace

Result program_one_chip(Session& session, const Job& job, Report& report)
{
    return reason_of(session, tell_download(session, job, report));
}

void report_success(Session& session, const Job& job, Report& report)
{
    session.program_time = minutes_since(session.loop, session.program_started_us);
    Line success;
    success.en = "Program OK\nVerify  OK ( Total: " + session.program_time + " )\nEncrypt OK.";
    success.zh = "Program OK / 下载 OK\nVerify  OK / 校验 OK ";
    if (!session.erase_time.empty())
        success.zh += "\nerase times/擦除时间 :  " + session.erase_time;
    success.zh += "\nprogram times/下载时间: " + session.program_time + "\nEncrypt OK/ 已加密";
    report.say(success.as(Tone::good));
    if (job.calibrate_rc)
        rc_report(session.rc, report);
}

Result read_one_chip(Session& session, const Job& job, Report& report)
{
    report.enter(Stage::calling);
    const Result result = connect_target(session, job, Purpose::read_only, report);
    if (result == Result::good) {
        leave_isp(session);
        report.say(session.chip.fw_letter == "B" ? version_read_ok : read_ok);
    } else if (!session.stop_requested) {
        report.say(read_failed);
    }
    return reason_of(session, result);
}

} // namespace vrk
