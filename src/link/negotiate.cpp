#include "link/negotiate.h"

#include "link/baud.h"
#include "link/rc_test.h"

#include "catalog/attributes.h"
#include "platform/text_number.h"
#include "session/shared_texts.h"

#include <algorithm>
#include <cmath>

namespace vrk {

namespace {

constexpr int tries = 3;
constexpr int max_rounds = 3; // bauds that may be refused
constexpr std::uint8_t new_protocol_ready = 0x8F; // the newer chips' answer to the status command

constexpr Text watchdog_failed = {"Connection failed. / 握手失败", "Connection failed."};
constexpr Text silent_chip = {"Connection failed. / 握手失败(LB) (End: ", "Connection failed.(End: "};

// How long the answer may take at the new baud, ms: longer where its bytes are slower.
int answer_ms(std::int32_t baud, int at_least) { return std::max(static_cast<int>(300 - 0.008 * baud), at_least); }

bool bauds_differ(const Session& session) { return session.line.contact_baud != session.line.max_baud; }

void switch_line(Session& session, std::int32_t baud)
{
    session.close();
    session.parity_on = session.model().cap_parity;
    session.set_baud(baud);
    session.open();
}

// The frame, then the time that its bytes need to leave before the line may be switched.
void send_and_let_leave(Session& session, const Bytes& frame, bool for_set)
{
    session.port.send(frame);
    if (session.port.queued() > 0)
        session.loop.run_due();
    session.wait(std::max(
        leaving_ms(session.line.contact_baud, session.model().series, for_set), session.leaving_ms(frame.size())));
}

// The newer chips want to be asked once more before they negotiate.
Result ask_new_protocol(Session& session, Report& report)
{
    bool answered = false;
    for (int attempt = 0; attempt < tries && !answered && !session.port_gone(); ++attempt) {
        if (attempt > 0)
            session.wait(200);
        answered = session.ask_model(command::read_status, 300, 0, attempt > 0);
        if (session.stop_requested) {
            report_stop(report);
            return Result::stopped;
        }
    }
    if (!answered) {
        report_failed(session, report, 2, with_end_time(silent_chip, session.loop));
        return Result::no_answer;
    }
    if (session.rx.code() != new_protocol_ready) {
        report_connection_failed(session, report, 2);
        return Result::no_answer;
    }
    return Result::good;
}

// The two RC families stay at the baud of the contact: one frame ends the negotiation. Whether anybody has answered it
// is for the erase stage to see, which looks at what stands in the receive buffer.
Result end_at_contact_baud(Session& session, Report& report)
{
    session.wait(30);
    session.ask_model(command::set_baud, 1900, 0);
    if (!session.stop_requested)
        return Result::good;
    report_stop(report);
    return Result::stopped;
}

bool offer(Session& session, const BaudChoice& choice)
{
    const Reload reload = reload_for(choice.setting, choice.mode, is_newer_series(session.model().series));
    session.flush();
    for (int attempt = 0; attempt < tries; ++attempt) {
        session.wait(50);
        if (test_new_baud(session, choice.baud, reload.p1, reload.p2, attempt > 0))
            return true;
        if (session.is_over())
            return false;
    }
    return false;
}

// From the fastest baud down until the chip answers at one.
bool find_baud(Session& session, BaudChoice& choice)
{
    const double clock_hz = std::trunc(static_cast<double>(session.chip.mcu_clock_hz));
    bool answered = false;
    int rounds = 0;
    while (!answered && choice.index > 0 && rounds <= max_rounds && !session.is_over()) {
        calculate_baud(clock_hz, session.model().series, session.line.max_baud, choice);
        session.loop.run_due();
        ++rounds;
        if (choice.setting == 0)
            break; // no divisor gives any baud of the list
        if (!session.ensure_open())
            break;
        answered = offer(session, choice);
        if (!answered) // a divisor of 1 is the clock's fastest baud, and the last one tried
            choice.index = choice.setting == 1 ? std::int16_t{0} : std::max<std::int16_t>(choice.index - 1, 0);
    }
    session.chip.baud_error = choice.error;
    return answered && rounds <= max_rounds; // an answer in a fourth round comes too late
}

bool confirm(Session& session, const BaudChoice& choice)
{
    const Reload reload = reload_for(choice.setting, choice.mode, is_newer_series(session.model().series));
    session.chip.reload_hi = reload.p1;
    session.chip.reload_lo = reload.p2;
    session.flush();
    session.wait(50);
    for (int attempt = 0; attempt < tries && !session.is_over(); ++attempt) {
        session.wait(50);
        if (set_new_baud(session, choice.baud, reload.p1, reload.p2, attempt > 0))
            return true;
    }
    return false;
}

void keep_speed_pair(ChipFacts& target)
{
    const SpeedPair pair =
        speed_pair(static_cast<std::uint16_t>(target.reload_hi * 256 + target.reload_lo), target.double_speed_on);
    target.reload_hi = high(pair.reload);
    target.reload_lo = low(pair.reload);
    target.reload2_hi = high(pair.reload2);
    target.reload2_lo = low(pair.reload2);
}

// Says how a step ended that did not end well.
Result ended(const Session& session, Report& report, bool good)
{
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    if (good)
        return Result::good;
    report_connection_failed(session, report, 3);
    return Result::no_answer;
}

bool answers_at_fixed_115200(Session& session)
{
    session.flush();
    bool answered = false;
    for (int attempt = 0; attempt < tries && !answered && !session.is_over(); ++attempt)
        answered = test_new_baud(session, 0, 0, 0, attempt > 0);
    return answered;
}

Result feed_watchdog(Session& session, const Job& job, Report& report)
{
    if (send_extern_WDT_address(session, job))
        return Result::good;
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    report_failed(session, report, 3, watchdog_failed);
    return Result::no_answer;
}

Result test_oscillator(Session& session, const Job& job, Report& report)
{
    if (rc_test(session, job.rc_target_mhz, rc_test_steps))
        return Result::good;
    if (session.stop_requested) {
        report_stop(report);
        return Result::stopped;
    }
    report_failed(session, report, 2, with_end_time(silent_chip, session.loop));
    return Result::no_answer;
}

} // namespace

Bytes build_test_baud_frame(std::uint8_t p1, std::uint8_t p2, std::uint8_t pause, std::uint8_t wait_states, Check check)
{
    const auto doubled = static_cast<std::uint32_t>(std::min((256 - p2) * 2, 0xFE));
    const std::uint8_t parameters[] = {p1, p2, low(0xFFU - p1), low(doubled), pause, wait_states};
    return build_command_frame(command::test_baud, parameters, check);
}

Bytes build_set_baud_frame(std::uint8_t p1, std::uint8_t p2, std::uint8_t pause, Check check)
{
    const auto twice = static_cast<std::uint32_t>((256 - p2) * 2);
    const std::uint8_t parameters[] = {p1, p2, low(0xFFU - p1), twice > 0xFE ? std::uint8_t{0xFF} : low(twice), pause};
    return build_command_frame(command::set_baud, parameters, check);
}

bool test_new_baud(Session& session, std::int32_t baud, std::uint8_t p1, std::uint8_t p2, bool again)
{
    const std::int32_t series = session.model().series;
    const double clock_hz = static_cast<double>(session.chip.mcu_clock_hz) / (session.chip.double_speed_on ? 2 : 1);
    session.flush();
    const bool fixed = session.line.fixed_115200;
    const std::uint8_t pause =
        fixed ? delay_code(clock_hz) : pause_byte(baud, session.line.contact_baud, series, clock_hz, false);
    if (!session.ensure_open())
        return false;
    const Bytes frame = build_test_baud_frame(p1, p2, pause, wait_state_code(clock_hz, series), session.check());
    if (!session.expect_reply(frame.size(), again))
        return false;
    send_and_let_leave(session, frame, false);

    const LineSettings before = session.port.line();
    const bool switched = bauds_differ(session) && !fixed;
    if (switched)
        switch_line(session, baud);
    const bool answered = session.wait_reply(answer_ms(baud, 950));
    if (switched && !session.line.is_one_speed()) {
        session.close();
        session.port.set_line(before);
        session.open();
    }
    return answered;
}

bool set_new_baud(Session& session, std::int32_t baud, std::uint8_t p1, std::uint8_t p2, bool again)
{
    const std::int32_t series = session.model().series;
    const auto clock_hz = static_cast<double>(session.chip.mcu_clock_hz);
    if (!session.ensure_open())
        return false;
    const std::uint8_t pause = pause_byte(baud, session.line.contact_baud, series, clock_hz, true);
    const Bytes frame = build_set_baud_frame(p1, p2, pause, session.check());
    if (!session.expect_reply(frame.size(), again))
        return false;
    send_and_let_leave(session, frame, true);
    if (bauds_differ(session))
        switch_line(session, baud);
    return session.wait_reply(answer_ms(baud, 1200));
}

std::uint8_t watchdog_pin_code(std::string_view pin)
{
    if (pin.size() != 4)
        return 0xFF;
    return static_cast<std::uint8_t>(number_in(pin.substr(1, 1)) * 16 + number_in(pin.substr(3, 1)));
}

bool send_extern_WDT_address(Session& session, const Job& job)
{
    if (!job.watchdog_pin)
        return true;
    if (!session.ensure_open())
        return false;
    const Bytes frame = build_command_frame(command::feed_pin, std::span{&*job.watchdog_pin, 1}, session.check());
    for (int attempt = 0; attempt < tries && !session.is_over(); ++attempt) {
        if (!session.expect_reply(frame.size(), attempt > 0))
            break;
        session.send(frame);
        if (session.wait_reply(500))
            return true;
    }
    return false;
}

Result negotiate_baud(Session& session, const Job& job, Report& report, std::int32_t& baud)
{
    Result result = feed_watchdog(session, job, report);
    const bool fixed_115200 = session.chip.tl_mode_active;
    if (result == Result::good && fixed_115200)
        result = ended(session, report, answers_at_fixed_115200(session));
    if (result == Result::good && session.model().cap_new_protocol)
        result = ask_new_protocol(session, report);
    if (result == Result::good && job.calibrate_rc)
        result = test_oscillator(session, job, report);
    if (result != Result::good)
        return result;
    if (series_is_15_16(session.model().series)) {
        baud = session.port.line().baud;
        return end_at_contact_baud(session, report);
    }

    BaudChoice choice;
    if (!fixed_115200) {
        result = ended(session, report, find_baud(session, choice));
        if (result == Result::good)
            result = ended(session, report, confirm(session, choice));
        if (result != Result::good)
            return result;
    }
    session.flush();
    baud = fixed_115200 ? 115200 : choice.baud;
    keep_speed_pair(session.chip);
    return Result::good;
}

} // namespace vrk
