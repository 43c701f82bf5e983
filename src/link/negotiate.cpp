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

bool bauds_differ(const Shell& shell)
{
    return number_in(shell.form.cobBaudMin.text()) != number_in(shell.form.cobBaudMax.text());
}

bool ensure_open(Shell& shell)
{
    return shell.MSComm1.PortOpen() || open_link(shell);
}

void switch_line(Shell& shell, const std::string& baud)
{
    shell.MSComm1.close();
    shell.link.link_parity_on = wire_record(shell).cap_parity;
    setMSCommSettings(shell, baud);
    shell.MSComm1.open();
}

// The frame, then the time that its bytes need to leave before the line may be switched.
void send_and_let_leave(Shell& shell, const Bytes& frame, bool for_set)
{
    shell.MSComm1.Output(frame);
    if (shell.MSComm1.OutBufferCount() > 0)
        shell.platform.loop.run_due();
    wait_ms(shell, leaving_ms(shell.link.handshake_baud, wire_record(shell).series, for_set));
}

// The newer chips want to be asked once more before they negotiate.
bool new_protocol_answers(Shell& shell)
{
    bool answered = false;
    for (int attempt = 0; attempt < tries && !answered; ++attempt) {
        if (attempt > 0)
            wait_ms(shell, 200);
        board_send_command(shell, command::read_status, 300, 0);
        answered = wait_model_reply(shell);
        if (shell.link.stop_requested) {
            report_stop(shell);
            return false;
        }
    }
    if (!answered) {
        beep(shell, 2);
        append_with_end_time(shell, silent_chip);
        return false;
    }
    if (shell.link.rx_buffer[3] != new_protocol_ready) {
        report_connection_failed(shell, 2);
        shell.link.reply_ok = false;
        return false;
    }
    return true;
}

// The two RC families stay at the handshake's baud: one frame ends the negotiation.
bool confirm_without_change(Shell& shell, std::string& baud)
{
    wait_ms(shell, 30);
    board_send_command(shell, command::set_baud, 1900, 0);
    wait_model_reply(shell);
    if (shell.link.stop_requested) {
        report_stop(shell);
        return false;
    }
    baud = number_text(number_in(shell.MSComm1.Settings().substr(0, 4)));
    return true;
}

bool offer(Shell& shell, const BaudChoice& choice)
{
    const Reload reload = reload_for(choice.setting, choice.mode, is_newer_series(wire_record(shell).series));
    flush_link(shell);
    for (int attempt = 0; attempt < tries; ++attempt) {
        wait_ms(shell, 50);
        if (test_new_baud(shell, std::to_string(choice.baud), reload.p1, reload.p2))
            return true;
        if (shell.link.stop_requested)
            return false;
    }
    return false;
}

// From the fastest baud down until the chip answers at one.
bool find_baud(Shell& shell, BaudChoice& choice)
{
    const auto max_baud = static_cast<std::int32_t>(number_in(shell.form.cobBaudMax.text()));
    const double clock_hz = std::trunc(static_cast<double>(shell.target.mcu_clock_hz));
    bool answered = false;
    int rounds = 0;
    while (!answered && choice.index > 0 && rounds <= max_rounds && !shell.link.stop_requested) {
        calculate_baud(clock_hz, wire_record(shell).series, max_baud, choice);
        shell.platform.loop.run_due();
        ++rounds;
        if (choice.setting <= 1)
            break; // no divisor gives any baud of the list
        if (!ensure_open(shell))
            break;
        answered = offer(shell, choice);
        if (!answered)
            choice.index = static_cast<std::int16_t>(std::max(choice.index - 1, 0));
    }
    shell.target.baud_error = choice.error;
    return answered && rounds <= max_rounds; // an answer in a fourth round comes too late
}

bool confirm(Shell& shell, const BaudChoice& choice)
{
    const Reload reload = reload_for(choice.setting, choice.mode, is_newer_series(wire_record(shell).series));
    shell.target.reload_hi = reload.p1;
    shell.target.reload_lo = reload.p2;
    flush_link(shell);
    wait_ms(shell, 50);
    for (int attempt = 0; attempt < tries && !shell.link.stop_requested; ++attempt) {
        wait_ms(shell, 50);
        if (set_new_baud(shell, std::to_string(choice.baud), reload.p1, reload.p2))
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
bool ended_well(Shell& shell, bool good)
{
    if (shell.link.stop_requested)
        report_stop(shell);
    else if (!good)
        report_connection_failed(shell, 3);
    return good && !shell.link.stop_requested;
}

bool answers_at_fixed_115200(Shell& shell)
{
    flush_link(shell);
    bool answered = false;
    for (int attempt = 0; attempt < tries && !answered && !shell.link.stop_requested; ++attempt)
        answered = test_new_baud(shell, "0", 0, 0);
    return answered;
}

bool watchdog_is_fed(Shell& shell)
{
    if (send_extern_WDT_address(shell))
        return true;
    if (shell.link.stop_requested) {
        report_stop(shell);
    } else {
        beep(shell, 3);
        append_message(shell, watchdog_failed);
    }
    return false;
}

bool oscillator_is_tested(Shell& shell)
{
    if (rc_test(shell, rc_test_steps))
        return true;
    if (shell.link.stop_requested) {
        report_stop(shell);
    } else {
        beep(shell, 2);
        append_with_end_time(shell, silent_chip);
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

bool test_new_baud(Shell& shell, const std::string& baud, std::uint8_t p1, std::uint8_t p2)
{
    const std::int32_t series = wire_record(shell).series;
    const double clock_hz = static_cast<double>(shell.target.mcu_clock_hz) / (shell.target.double_speed_on ? 2 : 1);
    flush_link(shell);
    const auto baud_number = static_cast<std::int32_t>(number_in(baud));
    const std::uint8_t pause = shell.form.cheTL.value()
        ? delay_code(clock_hz)
        : pause_byte(baud_number, shell.link.handshake_baud, series, clock_hz, false);
    if (!ensure_open(shell))
        return false;
    expect_reply(shell);
    send_and_let_leave(
        shell, build_test_baud_frame(p1, p2, pause, wait_state_code(clock_hz, series), wire_check(shell)), false);

    std::string remembered;
    if (bauds_differ(shell) && !shell.form.cheTL.value()) {
        remembered = shell.MSComm1.Settings();
        switch_line(shell, baud);
    }
    const bool answered = wait_reply(shell, answer_ms(baud, 950));
    if (!remembered.empty() && shell.form.cobBaudMax.text().substr(0, 4) != shell.link.handshake_baud) {
        shell.MSComm1.close();
        shell.MSComm1.set_Settings(remembered);
        shell.MSComm1.open();
    }
    return answered;
}

bool set_new_baud(Shell& shell, const std::string& baud, std::uint8_t p1, std::uint8_t p2)
{
    const std::int32_t series = wire_record(shell).series;
    const auto clock_hz = static_cast<double>(shell.target.mcu_clock_hz);
    const auto baud_number = static_cast<std::int32_t>(number_in(baud));
    if (!ensure_open(shell))
        return false;
    expect_reply(shell);
    const std::uint8_t pause = pause_byte(baud_number, shell.link.handshake_baud, series, clock_hz, true);
    send_and_let_leave(shell, build_set_baud_frame(p1, p2, pause, wire_check(shell)), true);
    if (bauds_differ(shell))
        switch_line(shell, baud);
    return wait_reply(shell, shell.Timer8, answer_ms(baud, 1200));
}

std::uint8_t watchdog_pin_code(std::string_view pin)
{
    if (pin.size() != 4)
        return 0xFF;
    return static_cast<std::uint8_t>(number_in(pin.substr(1, 1)) * 16 + number_in(pin.substr(3, 1)));
}

bool send_extern_WDT_address(Shell& shell)
{
    if (!shell.form.opt_ISP_DEMO_WDT[1].value())
        return true;
    if (!ensure_open(shell))
        return false;
    const std::uint8_t pin = watchdog_pin_code(shell.form.comb_WDT.text());
    for (int attempt = 0; attempt < tries && !shell.link.stop_requested; ++attempt) {
        expect_reply(shell);
        send_frame(shell, build_command_frame(command::feed_pin, std::span{&pin, 1}, wire_check(shell)));
        if (wait_reply(shell, 500))
            return true;
    }
    return false;
}

bool negotiate_baud(Shell& shell, std::string& baud)
{
    if (!watchdog_is_fed(shell))
        return false;
    const bool fixed_115200 = shell.target.tl_mode_active;
    if (fixed_115200 && !ended_well(shell, answers_at_fixed_115200(shell)))
        return false;
    if (wire_record(shell).cap_new_protocol && !new_protocol_answers(shell))
        return false;
    if (shell.rc.rc_calibrate && !oscillator_is_tested(shell))
        return false;
    if (series_is_15_16(wire_record(shell).series))
        return confirm_without_change(shell, baud);

    BaudChoice choice;
    if (!fixed_115200 && (!ended_well(shell, find_baud(shell, choice)) || !ended_well(shell, confirm(shell, choice))))
        return false;
    flush_link(shell);
    baud = fixed_115200 ? "115200" : std::to_string(choice.baud);
    keep_speed_pair(shell.target);
    return true;
}

} // namespace vrk
