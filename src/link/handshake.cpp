#include "link/handshake.h"

#include "link/clock.h"
#include "link/model_check.h"
#include "link/negotiate.h"

#include "catalog/attributes.h"
#include "catalog/rows.h"
#include "options/chip_status.h"
#include "options/status_frame.h"
#include "options/status_report.h"
#include "platform/text_number.h"
#include "session/guidance.h"
#include "session/shared_texts.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr int sync_spacing_ms = 10; // the boot loader listens for a moment after power-up only
constexpr int probe_spacing_ms = 100;
constexpr std::int32_t probe_baud = 115200;
constexpr std::uint8_t two_byte_ids_from = 209; // D1: families from here on have ids of four digits
constexpr int status_calls = 4;
constexpr int status_tries = 3; // of a call
constexpr int status_answer_ms = 900;
constexpr int leaving_wait_ms = 100;
constexpr int ready_spacing_ms = 200;
constexpr int least_length_with_id = 25;

constexpr Text connecting = {
    "Chinese:正在尝试与 MCU/单片机 握手连接 ... ", "We are trying to connect to target MCU ... "};
constexpr Text connecting_again = {"Chinese:正在重新连接 ...", "We are trying to connect to target MCU again ... "};
constexpr Text port_failed = {"打开串口失败!", "Open COM port failed!", Tone::bad};
constexpr Text port_failed_why = {"Chinese:串口已被其它程序打开或该串口不存在。",
    "The COM port is opened by another Program or the COM port does not exist.", Tone::advice};
constexpr Text reading_options = {"We are Reading options./ 正在读加密位,双倍速,版本号", "We are Reading options."};
constexpr Text current_baud = {"Current Baud is: / 当前波特率为: ", "Current Baud is: "};

// Index of a field of the status frame.
namespace field {
constexpr std::size_t version = 20;
constexpr std::size_t letter = 21;
constexpr std::size_t id_high = 23;
constexpr std::size_t id_low = 24;
constexpr std::size_t flags = 25;
constexpr std::size_t iap_flags = 54;
constexpr std::size_t long_id = 55;
} // namespace field

// Four models of FamilyBirch leave the boot block where it is whatever size they report.
bool has_no_boot_block(const McuRecord& record)
{
    return record.series == 2 && (record.mcu_id == "F105" || record.mcu_id == "F110");
}

// ---- until somebody answers

bool open_for_contact(Session& session)
{
    session.parity_even = session.selected.cap_parity_even;
    session.parity_on = session.selected.cap_parity;
    if (!session.set_baud(session.line.contact_baud))
        return false;
    if (!session.open() && !session.open()) // an adapter that has just come up may refuse the first time
        return false;
    session.drop_counts();
    return true;
}

// Sync pairs go out until the loader answers or the user stops. No time limit, on purpose: the hand at the power switch
// may be slow. The guidance speaks up after 4 s.
void call_by_sync(Session& session)
{
    while (!session.rx.reply_ok && !session.is_over()) {
        session.port.send(sync_pair);
        session.wait_reply(sync_spacing_ms);
    }
}

void call_by_probe(Session& session)
{
    session.close();
    session.parity_on = false;
    session.set_baud(probe_baud);
    session.open();
    session.drop_counts();
    session.flush();
    while (!session.rx.reply_ok && !session.is_over()) {
        session.send_short_command(command::probe);
        session.wait_reply(probe_spacing_ms);
    }
}

Result call_until_power_up(Session& session, Report& report)
{
    {
        const Guidance guidance(session, report);
        session.rx.accept_frames = true;
        if (session.line.fixed_115200)
            call_by_probe(session);
        else
            call_by_sync(session);
    }
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    if (session.rx.reply_ok)
        return Result::good;
    report_connection_failed(session, report, 3);
    return Result::no_answer;
}

void settle_line(Session& session)
{
    session.drop_counts();
    session.parity_on = !session.line.fixed_115200 && session.selected.cap_parity;
    session.set_baud(session.line.fixed_115200 ? probe_baud : session.line.contact_baud);
}

// ---- what the status frame tells. It stands in the receive buffer until the next frame is sent.

void measure_clock(Session& session)
{
    ChipFacts& chip = session.chip;
    chip.tl_mode_active = session.line.fixed_115200;
    chip.mcu_clock_hz =
        measured_clock_hz(sum_of_counts(session.rx.buffer), session.line.contact_baud, chip.tl_mode_active);
    chip.mcu_clock_saved = chip.mcu_clock_hz;
}

// These two stand in every status frame, however short.
void take_version(Session& session)
{
    const auto& rx = session.rx.buffer;
    session.chip.fw_letter = std::string(1, static_cast<char>(rx[field::letter]));
    session.chip.fw_version = decode_version(rx[field::version]);
}

// The model by its id, or by the second id that some chips send, which goes first if the catalogue has it.
std::string look_up_id(Session& session)
{
    const auto& rx = session.rx.buffer;
    ChipFacts& chip = session.chip;
    std::string name;
    chip.target_id_hi = hex_text(rx[field::id_high], 2);
    if (session.rx.length() > least_length_with_id) {
        if (rx[field::id_high] >= two_byte_ids_from)
            chip.target_id_lo = hex_text(rx[field::id_low], 2);
        name = find_mcu_by_id(session.catalogue, session.reported_id()).name;
    }
    if (session.rx.length() > 58 && rx[field::long_id] > 0) {
        chip.target_id_alt = hex_text(rx[field::long_id], 2) + hex_text(rx[field::long_id + 1], 2);
        const std::string second = find_mcu_by_id(session.catalogue, chip.target_id_alt).name;
        if (!second.empty())
            name = second;
    }
    return name;
}

// False: the name is not in the catalogue. A chip without a name goes on under the rules of the selected model.
bool take_connected_record(Session& session)
{
    if (session.chip.target_name.empty())
        return true;
    const auto found = locate_mcu_by_name(session.catalogue, session.chip.target_name);
    if (!found)
        return false;
    session.connected = read_mcu_row(session.catalogue, found->series, found->row);
    session.identified = true;
    return true;
}

bool has_flags(const Session& session) { return session.rx.length() > 27 && session.rx.buffer[field::version] > 0x25; }

void decode_options(Session& session, const Job& job, StatusLayout layout)
{
    const bool sixteen_rows = session.identified && option_family(session.connected.series) == 4;
    session.told = decode_status_frame(session.fields(), layout, session.chip.fw_letter, session.chip.fw_version,
        sixteen_rows, job.options.bytes[16][0], session.status_bytes);
}

// 6 clocks a machine cycle: where the firmware reports it, and how, is a matter of the letter.
bool reports_double_speed(const Session& session)
{
    const std::string& letter = session.chip.fw_letter;
    if (letter == "A")
        return has_double_speed_bit(session.rx.buffer);
    if (letter == "C" || letter == "N" || letter == "O")
        return session.told[1] && (session.status_bytes[1] & 1) == 0;
    return false;
}

ChipStatus status_of(const Session& session)
{
    ChipStatus status;
    status.model = session.model();
    status.target_name = session.chip.target_name;
    status.fw_version = session.chip.fw_version;
    status.fw_letter = session.chip.fw_letter;
    status.status_bytes = session.status_bytes;
    status.options_told = session.told.any();
    status.double_speed_bit = has_double_speed_bit(session.rx.buffer);
    return status;
}

void report_status(Session& session, Report& report)
{
    const ChipStatus status = status_of(session);
    for (const Line& line : firmware_lines(status))
        report.say(line);
    if (enable_disp_RC_frequency(session.chip.fw_version, session.rx.length(), 0)) {
        const RcFrequencies measured = rc_frequencies(session.rx.buffer);
        session.rc.rc_last = measured.last;
        session.rc.rc_factory = measured.factory;
        for (const Line& line : rc_frequency_lines(session.rc.rc_last, session.rc.rc_factory, false))
            report.say(line);
    }
    report.options_read(status);
    for (const Line& line : clock_lines(session.chip))
        report.say(line);
}

bool id_was_readable(const Session& session)
{
    const int least_length = session.parity_on ? 58 : 57;
    return session.rx.length() < least_length || (session.rx.buffer[field::iap_flags] & 1) == 0;
}

// Everything that a status frame with an id tells. The steps stand in the order in which they need each other:
//   the id names the record, and with it the layout of the option bytes;
//   letter, version and layout decode the option bytes;
//   the option bytes tell the speed, and flags and speed what the clock line says;
//   only then is anything said, and only then may the connection be given up.
Result identify(Session& session, const Job& job, Purpose purpose, Report& report)
{
    session.chip.status_has_options = true;
    session.chip.target_name = look_up_id(session);
    if (!take_connected_record(session))
        return Result::unknown_chip;

    decode_options(session, job, StatusLayout::power_up);
    session.chip.double_speed_on = reports_double_speed(session);
    if (has_flags(session))
        session.chip.clock_doubled_flag = session.rx.buffer[field::flags] & 0x20;
    if (session.identified && series_is_15_16(session.connected.series))
        std::copy_n(
            session.rx.buffer.begin() + field::iap_flags, session.rc.rc_saved.size(), session.rc.rc_saved.begin());

    report_status(session, report);
    if (!id_was_readable(session)) {
        report.say(Line{"IAP read MCU ID is error!"}.as(Tone::bad));
        report.beep(3);
        return Result::unreadable_id;
    }
    if (purpose == Purpose::download && session.rx.length() > least_length_with_id)
        return model_check(session, job, report);
    return Result::good;
}

void take_boot_size(Session& session)
{
    constexpr std::int16_t sizes[] = {0x400, 0x600, 0x800, 0xA00};
    ChipFacts& chip = session.chip;
    if (!has_flags(session))
        return;
    const std::uint8_t flags = session.rx.buffer[field::flags];
    session.rx.header_required = (flags & 0x80) != 0;
    chip.boot_size = has_no_boot_block(session.connected) ? std::int16_t{0} : sizes[flags & 3];
    chip.boot_size_known = true;
}

// ---- chips whose first frame was too short to tell their options

Result read_options(Session& session, const Job& job, Report& report)
{
    bool read = false;
    for (int call = 0; call < status_calls && !read && !session.is_over(); ++call)
        read = read_status(session, job) && session.chip.options_read_ok;
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    if (!read) {
        report_connection_failed(session, report, 3);
        return Result::no_answer;
    }
    return Result::good;
}

// Older chips want to hear five of these before they take other commands. Whether they answer is not looked at, but
// what they answer must have come before the next frame.
void send_ready_five_times(Session& session)
{
    const int spacing_ms = std::max(ready_spacing_ms, session.exchange_ms(model_frame_size));
    for (int i = 0; i < 5 && !session.is_over(); ++i) {
        session.send_model_command(command::ready, 0);
        session.wait(spacing_ms);
    }
}

// Waits for power-up without limit, takes the status frame and negotiates the baud. `baud` then holds the speed of the
// line.
Result handshake(Session& session, const Job& job, Purpose purpose, Report& report, std::int32_t& baud)
{
    if (!open_for_contact(session)) {
        report.beep(3);
        report.say(port_failed);
        report.say(port_failed_why);
        report_refusal(session, report);
        return Result::no_port;
    }
    report.port_is_open(true);
    if (const Result called = call_until_power_up(session, report); called != Result::good)
        return called;

    report.enter(Stage::found);
    settle_line(session);
    measure_clock(session);
    take_version(session);
    if (session.rx.length() >= least_length_with_id) {
        const Result identified = identify(session, job, purpose, report);
        if (identified != Result::good)
            return identified;
        session.chip.options_read_ok = session.told.any();
        if (purpose == Purpose::read_only && session.chip.options_read_ok)
            return Result::good;
    }
    take_boot_size(session);
    if (purpose == Purpose::read_only) {
        session.drop_counts();
        report.say(reading_options);
        const Result read = read_options(session, job, report);
        if (read == Result::good && session.chip.status_has_options)
            report.options_read(status_of(session)); // of a chip whose own frame has told all but them
        return read;
    }
    if (!session.chip.tl_mode_active)
        report.say(connecting_again);
    return negotiate_baud(session, job, report, baud);
}

Result reach_target(Session& session, const Job& job, Purpose purpose, Report& report)
{
    report.say(connecting);
    session.status_bytes = {}; // of a chip before, in whose place another one may stand by now
    session.told.reset();
    std::int32_t baud = 0;
    if (const Result shaken = handshake(session, job, purpose, report, baud); shaken != Result::good)
        return shaken;
    if (!session.model().cap_new_protocol)
        send_ready_five_times(session);
    if (purpose == Purpose::read_only)
        return Result::good;
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    if (!session.chip.status_has_options) {
        if (const Result read = read_options(session, job, report); read != Result::good)
            return read;
    }
    report.say(Line{current_baud} + std::to_string(baud) + " bps.");
    return model_check(session, job, report);
}

} // namespace

Result connect_target(Session& session, const Job& job, Purpose purpose, Report& report)
{
    const Result result = reach_target(session, job, purpose, report);
    session.chip.target_ok = result == Result::good;
    return result;
}

bool read_status(Session& session, const Job& job)
{
    session.chip.options_read_ok = false;
    const Bytes frame = build_command_frame(command::read_status, {}, session.check());
    for (int attempt = 0; attempt < status_tries && !session.is_over(); ++attempt) {
        session.drop_counts();
        session.wait(50);
        if (!session.expect_reply(frame.size(), attempt > 0))
            return false;
        session.send(frame);
        if (session.wait_reply(status_answer_ms))
            break;
    }
    if (!session.rx.reply_ok)
        return false;
    decode_options(session, job, StatusLayout::answer);
    session.chip.options_read_ok = session.told.any();
    return true;
}

void leave_isp(Session& session)
{
    session.send_short_command(command::leave_isp);
    const int leaving_ms = session.leaving_ms(build_short_frame(command::leave_isp, session.check()).size());
    const Deadline end(session.loop, std::max(leaving_wait_ms, leaving_ms));
    session.wait(leaving_ms); // whatever comes in, the frame has to get out
    while (!session.rx.reply_ok && !end.passed())
        session.loop.yield();
}

void let_chip_go(Session& session)
{
    leave_isp(session);
    session.drop_counts();
    session.close();
}

} // namespace vrk
