#include "link/negotiate.h"

#include "link/baud.h"
#include "link/port.h"
#include "link/rc_test.h"
#include "link/stop.h"

#include "catalog/attributes.h"
#include "form/waits.h"
#include "platform/text_number.h"

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
int answer_ms(const std::string& baud, int at_least)
{
    return std::max(static_cast<int>(300 - 0.008 * number_in(baud)), at_least);
}

bool bauds_differ(const MainForm& form)
{
    return number_in(form.cobBaudMin.text()) != number_in(form.cobBaudMax.text());
}

bool ensure_open(MainForm& form)
{
    return form.MSComm1.PortOpen() || open_link(form);
}

void switch_line(MainForm& form, const std::string& baud)
{
    form.MSComm1.close();
    form.link.link_parity_on = wire_record(form).cap_parity;
    setMSCommSettings(form, baud);
    form.MSComm1.open();
}

// The frame, then the time that its bytes need to leave before the line may be switched.
void send_and_let_leave(MainForm& form, const Bytes& frame, bool for_set)
{
    form.MSComm1.Output(frame);
    if (form.MSComm1.OutBufferCount() > 0)
        form.platform.loop.run_due();
    wait_ms(form, leaving_ms(form.link.handshake_baud, wire_record(form).series, for_set));
}

// The newer chips want to be asked once more before they negotiate.
bool new_protocol_answers(MainForm& form)
{
    bool answered = false;
    for (int attempt = 0; attempt < tries && !answered; ++attempt) {
        if (attempt > 0)
            wait_ms(form, 200);
        board_send_command(form, command::read_status, 300, 0);
        answered = wait_model_reply(form);
        if (form.link.stop_requested) {
            report_stop(form);
            return false;
        }
    }
    if (!answered) {
        beep(form, 2);
        append_with_end_time(form, silent_chip);
        return false;
    }
    if (form.link.rx_buffer[3] != new_protocol_ready) {
        report_connection_failed(form, 2);
        form.link.reply_ok = false;
        return false;
    }
    return true;
}

// The two RC families stay at the handshake's baud: one frame ends the negotiation.
bool confirm_without_change(MainForm& form, std::string& baud)
{
    wait_ms(form, 30);
    board_send_command(form, command::set_baud, 1900, 0);
    wait_model_reply(form);
    if (form.link.stop_requested) {
        report_stop(form);
        return false;
    }
    baud = number_text(number_in(form.MSComm1.Settings().substr(0, 4)));
    return true;
}

bool offer(MainForm& form, const BaudChoice& choice)
{
    const Reload reload = reload_for(choice.setting, choice.mode, is_newer_series(wire_record(form).series));
    flush_link(form);
    for (int attempt = 0; attempt < tries; ++attempt) {
        wait_ms(form, 50);
        if (test_new_baud(form, std::to_string(choice.baud), reload.p1, reload.p2))
            return true;
        if (form.link.stop_requested)
            return false;
    }
    return false;
}

// From the fastest baud down until the chip answers at one.
bool find_baud(MainForm& form, BaudChoice& choice)
{
    const auto max_baud = static_cast<std::int32_t>(number_in(form.cobBaudMax.text()));
    const double clock_hz = std::trunc(static_cast<double>(form.target.mcu_clock_hz));
    bool answered = false;
    int rounds = 0;
    while (!answered && choice.index > 0 && rounds <= max_rounds && !form.link.stop_requested) {
        calculate_baud(clock_hz, wire_record(form).series, max_baud, choice);
        form.platform.loop.run_due();
        ++rounds;
        if (choice.setting <= 1)
            break; // no divisor gives any baud of the list
        if (!ensure_open(form))
            break;
        answered = offer(form, choice);
        if (!answered)
            choice.index = static_cast<std::int16_t>(std::max(choice.index - 1, 0));
    }
    form.target.baud_error = choice.error;
    return answered && rounds <= max_rounds; // an answer in a fourth round comes too late
}

bool confirm(MainForm& form, const BaudChoice& choice)
{
    const Reload reload = reload_for(choice.setting, choice.mode, is_newer_series(wire_record(form).series));
    form.target.reload_hi = reload.p1;
    form.target.reload_lo = reload.p2;
    flush_link(form);
    wait_ms(form, 50);
    for (int attempt = 0; attempt < tries && !form.link.stop_requested; ++attempt) {
        wait_ms(form, 50);
        if (set_new_baud(form, std::to_string(choice.baud), reload.p1, reload.p2))
            return true;
    }
    return false;
}

void keep_speed_pair(TargetFacts& target)
{
    const SpeedPair pair
        = speed_pair(static_cast<std::uint16_t>(target.reload_hi * 256 + target.reload_lo), target.double_speed_on);
    target.reload_hi = static_cast<std::int16_t>(pair.reload >> 8);
    target.reload_lo = static_cast<std::int16_t>(pair.reload & 0xFF);
    target.reload2_hi = static_cast<std::int16_t>(pair.reload2 >> 8);
    target.reload2_lo = static_cast<std::int16_t>(pair.reload2 & 0xFF);
}

// Says how a step ended that did not end well.
bool ended_well(MainForm& form, bool good)
{
    if (form.link.stop_requested)
        report_stop(form);
    else if (!good)
        report_connection_failed(form, 3);
    return good && !form.link.stop_requested;
}

bool answers_at_fixed_115200(MainForm& form)
{
    flush_link(form);
    bool answered = false;
    for (int attempt = 0; attempt < tries && !answered && !form.link.stop_requested; ++attempt)
        answered = test_new_baud(form, "0", 0, 0);
    return answered;
}

bool watchdog_is_fed(MainForm& form)
{
    if (send_extern_WDT_address(form))
        return true;
    if (form.link.stop_requested) {
        report_stop(form);
    } else {
        beep(form, 3);
        append_message(form, watchdog_failed);
    }
    return false;
}

bool oscillator_is_tested(MainForm& form)
{
    if (rc_test(form, rc_test_steps))
        return true;
    if (form.link.stop_requested) {
        report_stop(form);
    } else {
        beep(form, 2);
        append_with_end_time(form, silent_chip);
    }
    return false;
}

} // namespace

Bytes build_test_baud_frame(std::uint8_t p1, std::uint8_t p2, std::uint8_t pause, std::uint8_t wait_states, Check check)
{
    const auto doubled = static_cast<std::uint8_t>(std::min((256 - p2) * 2, 0xFE));
    const std::uint8_t parameters[] = {p1, p2, static_cast<std::uint8_t>(0xFF - p1), doubled, pause, wait_states};
    return build_command_frame(command::test_baud, parameters, check);
}

Bytes build_set_baud_frame(std::uint8_t p1, std::uint8_t p2, std::uint8_t pause, Check check)
{
    const int twice = (256 - p2) * 2;
    const auto doubled = static_cast<std::uint8_t>(twice > 0xFE ? 0xFF : twice);
    const std::uint8_t parameters[] = {p1, p2, static_cast<std::uint8_t>(0xFF - p1), doubled, pause};
    return build_command_frame(command::set_baud, parameters, check);
}

bool test_new_baud(MainForm& form, const std::string& baud, std::uint8_t p1, std::uint8_t p2)
{
    const std::int32_t series = wire_record(form).series;
    const double clock_hz = static_cast<double>(form.target.mcu_clock_hz) / (form.target.double_speed_on ? 2 : 1);
    flush_link(form);
    const auto baud_number = static_cast<std::int32_t>(number_in(baud));
    const std::uint8_t pause = form.cheTL.value()
        ? delay_code(clock_hz)
        : pause_byte(baud_number, form.link.handshake_baud, series, clock_hz, false);
    if (!ensure_open(form))
        return false;
    expect_reply(form);
    send_and_let_leave(
        form, build_test_baud_frame(p1, p2, pause, wait_state_code(clock_hz, series), wire_check(form)), false);

    std::string remembered;
    if (bauds_differ(form) && !form.cheTL.value()) {
        remembered = form.MSComm1.Settings();
        switch_line(form, baud);
    }
    const bool answered = wait_reply(form, answer_ms(baud, 950));
    if (!remembered.empty() && form.cobBaudMax.text().substr(0, 4) != form.link.handshake_baud) {
        form.MSComm1.close();
        form.MSComm1.set_Settings(remembered);
        form.MSComm1.open();
    }
    return answered;
}

bool set_new_baud(MainForm& form, const std::string& baud, std::uint8_t p1, std::uint8_t p2)
{
    const std::int32_t series = wire_record(form).series;
    const auto clock_hz = static_cast<double>(form.target.mcu_clock_hz);
    const auto baud_number = static_cast<std::int32_t>(number_in(baud));
    if (!ensure_open(form))
        return false;
    expect_reply(form);
    const std::uint8_t pause = pause_byte(baud_number, form.link.handshake_baud, series, clock_hz, true);
    send_and_let_leave(form, build_set_baud_frame(p1, p2, pause, wire_check(form)), true);
    if (bauds_differ(form))
        switch_line(form, baud);
    return wait_reply(form, form.Timer8, answer_ms(baud, 1200));
}

std::uint8_t watchdog_pin_code(std::string_view pin)
{
    if (pin.size() != 4)
        return 0xFF;
    return static_cast<std::uint8_t>(number_in(pin.substr(1, 1)) * 16 + number_in(pin.substr(3, 1)));
}

bool send_extern_WDT_address(MainForm& form)
{
    if (!form.opt_ISP_DEMO_WDT[1].value())
        return true;
    if (!ensure_open(form))
        return false;
    const std::uint8_t pin = watchdog_pin_code(form.comb_WDT.text());
    for (int attempt = 0; attempt < tries && !form.link.stop_requested; ++attempt) {
        expect_reply(form);
        send_frame(form, build_command_frame(command::feed_pin, std::span{&pin, 1}, wire_check(form)));
        if (wait_reply(form, 500))
            return true;
    }
    return false;
}

bool negotiate_baud(MainForm& form, std::string& baud)
{
    if (!watchdog_is_fed(form))
        return false;
    const bool fixed_115200 = form.target.tl_mode_active;
    if (fixed_115200 && !ended_well(form, answers_at_fixed_115200(form)))
        return false;
    if (wire_record(form).cap_new_protocol && !new_protocol_answers(form))
        return false;
    if (form.rc.rc_calibrate && !oscillator_is_tested(form))
        return false;
    if (series_is_15_16(wire_record(form).series))
        return confirm_without_change(form, baud);

    BaudChoice choice;
    if (!fixed_115200 && (!ended_well(form, find_baud(form, choice)) || !ended_well(form, confirm(form, choice))))
        return false;
    flush_link(form);
    baud = fixed_115200 ? "115200" : std::to_string(choice.baud);
    keep_speed_pair(form.target);
    return true;
}

} // namespace vrk
