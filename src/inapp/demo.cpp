#include "inapp/demo.h"

#include "session/frame.h"
#include "session/guidance.h"
#include "session/image_writes.h"
#include "session/program.h"
#include "session/shared_texts.h"

#include "catalog/rows.h"

#include <algorithm>
#include <string>

namespace vrk {

namespace {

namespace demo_command {
constexpr std::uint8_t connect = 0xB0;
constexpr std::uint8_t run_code = 0xB1;
constexpr std::uint8_t erase = 0xB2;
constexpr std::uint8_t read_identity = 0xB5;
} // namespace demo_command

constexpr std::size_t command_size = 8;
constexpr int tries = 3;
constexpr int erase_ms = 5000;
constexpr int identity_ms = 2000;
constexpr int behind_erasure_ms = 100;
constexpr int second_ms = 1000;
constexpr double no_version = 0; // it has none: the boot loader's rules for versions do not count

// Where an identity stands in its frame, from 5A = 0 on.
constexpr std::size_t code_high = 6;
constexpr std::size_t code_low = 7;
constexpr std::size_t option = 8;
constexpr std::size_t tail = 3; // sum and end byte

// clang-format off
// The codes of the lines for 3 V, for 5 V and for both, by capacity.
struct ModelCode { std::uint16_t v3; std::uint16_t v5; std::uint16_t both; const char* id; };
constexpr ModelCode model_codes[] = {
//    3 V     5 V     both    id
    { 0x0001, 0x4001, 0x0051, "F001" },
    { 0x0002, 0x4002, 0x0052, "F002" },
    { 0x0003, 0x4003, 0x0053, "F004" },
    { 0x0004, 0x4004, 0x0054, "F104" },
    { 0x0005, 0x4005, 0x0058, "F108" },
    { 0x0006, 0x4006, 0x0516, "F110" },
};
// clang-format on

constexpr Text connecting = {
    "Chinese:正在尝试与 MCU/单片机 握手连接 ... ", "We are trying to connect to target MCU ... "};
constexpr Text connected = {"Connection is OK... / 握手成功...", "Connection is OK..."};
constexpr Text connection_failed = {"Connection is failed. / 握手失败 (End: ", "Connection is failed. (End: "};
constexpr Text reading = {"We are reading MCU Firmware Version ...", "We are reading MCU Firmware Version ..."};
constexpr Text reading_failed = {"读 Option 失败 (End: ", "Reading MCU Option failed. (End: "};
constexpr Text wrong_model = {
    "MCU 型号错, 请重选", "MCU Type is incorrect. please select correct MCU type and open the file again.", Tone::bad};
constexpr Text wrong_model_box = {"         Chinese:MCU 型号错。请重选 MCU、重新打开文件。",
    "MCU Type is incorrect. please select correct MCU type and open the file again."};
constexpr Text erasing = {"正在擦除应用程序区...", "We are erasing MCU flash..."};
constexpr Text erase_failed = {"擦除失败 (End: ", "Erasing MCU flash failed. (End: "};

Result stage_failed(const Session& session, Report& report, const Text& text, Result failure)
{
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    report_failed(session, report, 3, with_end_time(text, session.loop));
    return session.port_gone() ? Result::port_gone : failure;
}

// An answer need not name what it answers, so it counts only on a line that was silent before a repeat.
bool ask(Session& session, std::uint8_t code, int timeout_ms, bool again)
{
    if (!session.make_way(command_size, again))
        return false;
    session.flush();
    session.rx.demo_reply_ok = false;
    session.send_demo_command(code);
    return session.wait_demo_reply(timeout_ms);
}

// Called until it answers or the user stops: the user code may have to be brought to it by hand.
bool call(Session& session)
{
    const int answer_ms = demo_connect_ms(session.port.line().baud);
    while (!session.is_over()) {
        session.flush();
        session.rx.demo_reply_ok = false;
        session.send_demo_command(demo_command::connect);
        if (session.wait_demo_reply(answer_ms))
            return true;
    }
    return false;
}

Result connect(Session& session, const DemoJob& job, Report& report)
{
    session.demo_mode = true;
    if (!open_user_line(session, job.line, report))
        return session.port_gone() ? Result::port_gone : Result::no_port;
    report.say(connecting);
    const Guidance guidance(session, report);
    if (!call(session))
        return stage_failed(session, report, connection_failed, Result::no_answer);
    report.enter(Stage::found);
    report.say(connected);
    return Result::good;
}

// What it was called with before is still good for late answers, so the first request is as one that is sent again.
bool identity_comes(Session& session)
{
    for (int i = 0; i < tries && !session.is_over(); ++i) {
        if (ask(session, demo_command::read_identity, identity_ms, true) && session.frame().size() > option + tail)
            return true;
    }
    return false;
}

void take_identity(Session& session, const std::string& id)
{
    const auto& rx = session.rx.buffer;
    session.chip.target_id_hi = id.substr(0, std::min<std::size_t>(2, id.size()));
    session.chip.target_name = id.empty() ? "" : find_mcu_by_id(session.catalogue, id).name;
    session.status_bytes[0] = rx[option];
    session.told.set(0);
}

Result read_identity(Session& session, const DemoJob& job, Report& report)
{
    report.say(reading);
    if (!identity_comes(session))
        return stage_failed(session, report, reading_failed, Result::no_answer);
    const auto& rx = session.rx.buffer;
    const std::string id = demo_model_id(static_cast<std::uint16_t>(rx[code_high] * 256 + rx[code_low]));
    take_identity(session, id);
    if (!session.chip.target_name.empty())
        report.say(Line{session.chip.target_name});
    if (!id.empty() && id == job.model.mcu_id)
        return Result::good;
    report.beep(3);
    report.say(wrong_model);
    report.show_box(wrong_model_box);
    return Result::wrong_model;
}

Result erase(Session& session, Report& report)
{
    report.say(erasing);
    bool erased = false;
    for (int i = 0; i < tries && !erased && !session.is_over(); ++i)
        erased = ask(session, demo_command::erase, erase_ms, i > 0);
    if (!erased || !session.pause(behind_erasure_ms))
        return stage_failed(session, report, erase_failed, Result::erase_failed);
    return Result::good;
}

void run_code(Session& session)
{
    session.send_demo_command(demo_command::run_code);
    session.send_demo_command(demo_command::run_code);
    session.wait(session.leaving_ms(command_size)); // nobody answers, and the port may close behind it
}

Result tell_download(Session& session, const DemoJob& job, Report& report)
{
    report.enter(Stage::calling);
    if (!numbers_will_be_written(job, job.model, no_version)) {
        report.show_box(number_outside);
        return Result::number_outside;
    }
    if (const Result connected_ = connect(session, job, report); connected_ != Result::good)
        return connected_;
    if (const Result known = read_identity(session, job, report); known != Result::good)
        return known;
    if (const Result erased = erase(session, report); erased != Result::good)
        return erased;
    if (const Result programmed = program_all(session, job, report); programmed != Result::good)
        return programmed == Result::programming_failed && session.port_gone() ? Result::port_gone : programmed;
    report.enter(Stage::settling);
    run_code(session);
    return Result::good;
}

} // namespace

int demo_connect_ms(std::int32_t baud) { return baud < 2400 ? 200 : baud < 4800 ? 100 : 50; }

std::string demo_model_id(std::uint16_t code)
{
    const auto row = std::ranges::find_if(
        model_codes, [code](const ModelCode& one) { return one.v3 == code || one.v5 == code || one.both == code; });
    return row == std::end(model_codes) ? std::string{} : row->id;
}

Result enter_demo(Session& session, const DemoJob& job, Report& report)
{
    return job.command ? send_user_command(session, *job.command, report) : Result::good;
}

Result program_by_demo(Session& session, const DemoJob& job, Report& report)
{
    const Result result = tell_download(session, job, report);
    session.demo_mode = false;
    return result;
}

void report_demo_success(Session& session, Report& report)
{
    session.program_time = minutes_since(session.loop, session.program_started_us);
    Line success;
    success.en = "Program OK.\nVerify  OK ( Total: " + session.program_time + " )";
    success.zh = "Program OK / 下载 OK\nVerify  OK / 校验 OK  ( Total: " + session.program_time + " )";
    report.say(success.as(Tone::good));
}

bool count_down_to_next_demo(Session& session, Report& report, int seconds)
{
    for (int left = seconds; left >= 0; --left) {
        const std::string count = std::to_string(left);
        Line line;
        line.en = "Program succeeded.\nAfter a few seconds re-connect will continue.  " + count;
        line.zh = "下载成功.\nChinese:几秒钟后将继续下载下一个 MCU...  " + count;
        report.say(line.as(Tone::good));
        if (!session.pause(second_ms)) {
            if (session.stop_requested)
                report_stop(report); // below the report of the chip that is good
            return false;
        }
    }
    return true;
}

} // namespace vrk
