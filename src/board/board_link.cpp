#include "board/board_link.h"

#include "session/frame.h"
#include "session/shared_texts.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"

#include <array>

namespace vrk {

namespace {

namespace board_command {
constexpr std::uint8_t version = 0x0C;
constexpr std::uint8_t probe = 0x0E;
constexpr std::uint8_t type = 0x69;
constexpr std::uint8_t erase_second = 0x86;
} // namespace board_command

constexpr std::int32_t board_baud = 115200;

// Parameters of the ready command: what the board is called for.
constexpr std::uint8_t call_for_job = 243;
constexpr std::uint8_t call_behind_erasure = 241;
constexpr std::array<std::uint8_t, 1> wake_byte = {0xAA};

constexpr int call_rounds = 20001; // of 200 ms: over an hour for the hand at the power switch
constexpr int call_ms = 200;
constexpr int confirmations = 11; // good answers in a row before the line is trusted
constexpr int confirmation_rounds = 201;
constexpr int again_rounds = 36;
constexpr int again_ms = 50;
constexpr int late_answers_ms = 700; // longer than any frame but an erasure is waited for
constexpr int version_tries = 4;
constexpr int first_version_ms = 3000; // the board may still be busy with its power-up
constexpr int probe_tries = 4;
constexpr int type_rounds = 11;
constexpr int between_types_ms = 20;
constexpr int answer_ms = 300;
constexpr int erase_tries = 6;
constexpr int erase_ms = 4000;
constexpr int erase_second_ms = 600;

constexpr std::size_t identified_length = 21; // of a probe's answer that names the type

// Switches an automatic sorter through to the board. It listens with even parity, and answers nothing.
constexpr std::array<std::uint8_t, 21> sorter_frame = {0x46, 0xB9, 0x6A, 0x00, 0x13, 0xF0, 0x01, 0x04, 0x00, 0x02, 0x03,
    0x04, 0x05, 0x06, 0x07, 0x08, 0x01, 0x95, 0x7F, 0x07, 0x16};
constexpr int sorter_switches_ms = 1000;
constexpr int sorter_settles_ms = 200;

constexpr Text port_failed = {"打开串口失败!\n串口已被其它程序打开或不存在。",
    "Open COM port failed!\nThe COM port is opened by another Program or the COM port does not exist."};
constexpr Text connecting = {
    "正在连接...\n请给脱机下载板上电。", "We are trying to connect to target MCU ... \nPlease turn power on."};
constexpr Text connection_failed = {"连接失败。", "Connection failed!"};
constexpr Text version_text = {"脱机下载固件版本号: ", "Version: "};
constexpr Text wrong_board = {"脱机下载板不支持您选择的 MCU。", "脱机下载板不支持您选择的 MCU。", Tone::bad};

bool open_line(Session& session, bool even_parity)
{
    session.close();
    session.parity_on = even_parity;
    session.parity_even = even_parity;
    const bool opened = session.set_baud(board_baud) && session.open();
    session.drop_counts();
    return opened;
}

bool switch_sorter_through(Session& session)
{
    if (!open_line(session, true))
        return false;
    session.send(sorter_frame);
    const bool waited = session.pause(sorter_switches_ms);
    return waited && open_board_line(session) && session.pause(sorter_settles_ms);
}

// Behind calls that went out more often than they were answered: what still comes for them must not be taken for the
// answer to an erasure or to a block, which has no other mark than to be good.
bool let_late_answers_pass(Session& session, int calls) { return calls <= 1 || session.pause(late_answers_ms); }

// For the hand at the power switch. Nothing rests on which call is answered, so they need no silence between them.
bool call_until_power_up(Session& session)
{
    for (int round = 0; round < call_rounds && !session.is_over(); ++round) {
        const Deadline end(session.loop, call_ms);
        session.send_model_command(command::ready, call_for_job);
        session.port.send(wake_byte);
        if (session.wait_answer(end))
            return let_late_answers_pass(session, round + 1);
    }
    return false;
}

// One good answer within so many rounds. `called_before`: the same frame has gone out already.
bool answers(Session& session, int rounds, int timeout_ms, std::uint8_t parameter, bool called_before)
{
    for (int round = 0; round < rounds && !session.is_over(); ++round) {
        if (session.ask_model(command::ready, timeout_ms, parameter, called_before || round > 0))
            return let_late_answers_pass(session, round + 1);
    }
    return false;
}

bool confirm(Session& session)
{
    for (int i = 0; i < confirmations; ++i) {
        if (!answers(session, confirmation_rounds, call_ms, call_for_job, i == 0))
            return false;
    }
    return true;
}

// An answer with this code, and with the byte at `index`.
bool ask(Session& session, std::uint8_t code, int timeout_ms, int tries, std::size_t index)
{
    for (int i = 0; i < tries && !session.is_over(); ++i) {
        if (session.ask_model(code, timeout_ms, 0, i > 0) && session.rx.code() == code &&
            session.fields().size() > index)
            return true;
    }
    return false;
}

bool read_version(Session& session, int timeout_ms, BoardFacts& facts)
{
    if (!ask(session, board_command::version, timeout_ms, version_tries, 4))
        return false;
    facts.firmware = hex_text(session.rx.buffer[4], 2);
    return true;
}

// A board that names its type is asked for it some more; one answer is enough.
bool tells_type(Session& session)
{
    bool told = false;
    for (int i = 0; i < type_rounds && !session.is_over(); ++i) {
        if (session.ask_model(board_command::type, answer_ms, 0, i > 0) && session.rx.code() == board_command::type) {
            told = true;
            session.pause(between_types_ms);
        }
    }
    return told;
}

bool probe(Session& session, const BoardJob& job, BoardFacts& facts)
{
    if (!ask(session, board_command::probe, answer_ms, probe_tries, 5))
        return false;
    const auto& answer = session.rx.buffer;
    facts.single_area = answer[4] != 0;
    facts.capacity = answer[5] * 1024;
    if (!job.asks_board_type || session.rx.length() < identified_length || answer[9] != 'T' || answer[10] != 'L')
        return true;
    facts.type = answer[7];
    return tells_type(session);
}

bool takes_model(const BoardFacts& facts, const McuRecord& model)
{
    if (!facts.type || *facts.type == model.series)
        return true;
    if (*facts.type == 2)
        return series_is_rc_group(model.series) || model.series == 2;
    return *facts.type == 5 && model.series >= 3 && model.series <= 5;
}

bool reach_board(Session& session, Report& report, BoardFacts& facts)
{
    session.rx.accept_frames = true;
    if (!call_until_power_up(session) || !confirm(session) || !read_version(session, first_version_ms, facts))
        return false;
    report.enter(Stage::found);
    report.say(Line{version_text} + Line{facts.firmware.substr(0, 1) + "." + facts.firmware.substr(1)});
    return true;
}

bool any_answer(Session& session, std::uint8_t code, int timeout_ms, int tries)
{
    for (int i = 0; i < tries && !session.is_over(); ++i) {
        if (session.ask_model(code, timeout_ms, 0, i > 0))
            return true;
    }
    return false;
}

} // namespace

int BoardFacts::version() const
{
    return static_cast<int>(number_in(firmware.substr(0, firmware.find_first_not_of("0123456789"))));
}

bool open_board_line(Session& session) { return open_line(session, false); }

Result board_failed(const Session& session, Report& report, int beeps, const Line& text, Result failure)
{
    if (session.stop_requested) {
        report.beep(1);
        report.say(Text{"操作被停止.", "Operation stopped."});
        return Result::stopped;
    }
    report_failed(session, report, beeps, text);
    return session.port_gone() ? Result::port_gone : failure;
}

Result connect_board(Session& session, const BoardJob& job, Report& report, BoardFacts& facts)
{
    session.board_mode = true;
    session.chip.target_id_hi = job.reported_id.substr(0, 2);
    session.chip.target_id_lo = job.reported_id.substr(session.chip.target_id_hi.size());
    if (!(job.behind_sorter ? switch_sorter_through(session) : open_board_line(session))) {
        const Result failed = board_failed(session, report, 0, port_failed, Result::no_port);
        report_refusal(session, report);
        return failed;
    }
    report.port_is_open(true);
    report.say(connecting);
    if (!reach_board(session, report, facts) || !probe(session, job, facts) || !read_version(session, answer_ms, facts))
        return board_failed(session, report, 0, connection_failed, Result::no_answer);
    if (!takes_model(facts, job.model)) {
        report.say(wrong_board);
        return Result::wrong_model;
    }
    return Result::good;
}

bool call_board_again(Session& session) { return answers(session, again_rounds, again_ms, call_behind_erasure, false); }

bool erase_board(Session& session) { return any_answer(session, command::erase, erase_ms, erase_tries); }

bool erase_second_area(Session& session)
{
    return any_answer(session, board_command::erase_second, erase_second_ms, erase_tries);
}

} // namespace vrk
