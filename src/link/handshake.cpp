#include "link/handshake.h"

#include "link/clock.h"
#include "link/model_check.h"
#include "link/negotiate.h"
#include "link/panel_state.h"
#include "link/port.h"
#include "link/stop.h"

#include "catalog/attributes.h"
#include "catalog/lookup.h"
#include "form/messages.h"
#include "form/waits.h"
#include "options/codec.h"
#include "options/status_frame.h"
#include "options/status_report.h"
#include "platform/text_number.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr int sync_spacing_ms = 10; // the boot loader listens for a moment after power-up only
constexpr int probe_spacing_ms = 100;
constexpr std::uint8_t two_byte_ids_from = 209; // D1: families from here on have ids of four digits
constexpr int status_calls = 4;

constexpr Text connecting
    = {"Chinese:正在尝试与 MCU/单片机 握手连接 ... ", "We are trying to connect to target MCU ... "};
constexpr Text connecting_again = {"Chinese:正在重新连接 ...", "We are trying to connect to target MCU again ... "};
constexpr Text port_failed = {"打开串口失败!", "Open COM port failed!"};
constexpr Text port_failed_why = {"Chinese:串口已被其它程序打开或该串口不存在。",
    "The COM port is opened by another Program or the COM port does not exist."};
constexpr Text reading_options
    = {"We are Reading options./ 正在读加密位,双倍速,版本号", "We are Reading options."};
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
}

// Four models of FamilyBirch leave the boot block where it is whatever size they report.
bool has_no_boot_block(const McuRecord& record)
{
    return record.series == 2 && (record.mcu_id == "F105" || record.mcu_id == "F110");
}

int frame_length(const Shell& shell) { return shell.link.rx_buffer[2]; }

void forget_target(Shell& shell)
{
    shell.target = TargetFacts{};
    shell.connected = McuRecord{};
    shell.beside = beside_record(shell.selected); // a chip that was taken for another may have left its own
}

bool open_for_handshake(Shell& shell)
{
    flush_link(shell);
    close_link(shell);
    set_comm_port(shell);
    shell.link.link_parity_on = shell.selected.cap_parity;
    if (!setMSCommSettings(shell, "1200") || !setMSCommSettings(shell, shell.link.handshake_baud)
        || !shell.MSComm1.open()) {
        beep(shell, 3);
        append_message(shell, port_failed);
        append_message(shell, port_failed_why);
        return false;
    }
    shell.MSComm1.clear_InBuffer();
    shell.MSComm1.clear_OutBuffer();
    show_port_open(shell, true);
    return true;
}

// Sync pairs go out until the loader answers or the user stops. No time limit, on purpose: the hand at the power switch
// may be slow. Timer9 speaks up after 4 s.
void call_by_sync(Shell& shell)
{
    while (!shell.link.reply_ok && !shell.link.stop_requested) {
        shell.MSComm1.Output(sync_pair);
        wait_reply(shell, sync_spacing_ms);
    }
}

void call_by_probe(Shell& shell)
{
    shell.MSComm1.close();
    shell.link.link_parity_on = false;
    setMSCommSettings(shell, "115200");
    shell.MSComm1.open();
    shell.MSComm1.clear_InBuffer();
    shell.MSComm1.clear_OutBuffer();
    flush_link(shell);
    while (!shell.link.reply_ok && !shell.link.stop_requested) {
        send_short_command(shell, command::probe);
        wait_reply(shell, probe_spacing_ms);
    }
}

bool call_until_power_up(Shell& shell)
{
    shell.link.header_required = false;
    shell.Timer9.start();
    shell.link.accept_frames = true;
    if (shell.form.cheTL.value())
        call_by_probe(shell);
    else
        call_by_sync(shell);
    if (shell.link.stop_requested) {
        shell.Timer9.stop();
        report_stop(shell);
        return false;
    }
    return true;
}

void settle_line(Shell& shell)
{
    shell.MSComm1.clear_InBuffer();
    shell.MSComm1.clear_OutBuffer();
    shell.link.link_parity_on = !shell.form.cheTL.value() && shell.selected.cap_parity;
    setMSCommSettings(shell, shell.form.cheTL.value() ? "115200" : shell.link.handshake_baud);
    shell.Timer9.stop();
}

void measure_clock(Shell& shell)
{
    TargetFacts& target = shell.target;
    target.tl_mode_active = shell.form.cheTL.value();
    target.mcu_clock_hz
        = measured_clock_hz(sum_of_counts(shell.link.rx_buffer), shell.link.handshake_baud, target.tl_mode_active);
    target.mcu_clock_saved = target.mcu_clock_hz;
    target.status_has_options = false;
    target.double_speed_on = false;
}

// The model by its id, or by the second id that some chips send, which goes first if the catalogue has it.
void look_up_id(Shell& shell)
{
    const auto& rx = shell.link.rx_buffer;
    TargetFacts& target = shell.target;
    target.target_id_hi = hex_text(rx[field::id_high], 2);
    target.status_has_options = true;
    if (frame_length(shell) > 25) {
        if (rx[field::id_high] >= two_byte_ids_from)
            target.target_id_lo = hex_text(rx[field::id_low], 2);
        target.target_name = find_mcu_by_id(shell.mcu_table, reported_id(shell)).name;
    }
    if (frame_length(shell) > 58 && rx[field::long_id] > 0) {
        target.target_id_alt = hex_text(rx[field::long_id], 2) + hex_text(rx[field::long_id + 1], 2);
        const std::string name = find_mcu_by_id(shell.mcu_table, target.target_id_alt).name;
        if (!name.empty())
            target.target_name = name;
    }
}

// False: the name is not in the catalogue.
bool take_connected_record(Shell& shell)
{
    TargetFacts& target = shell.target;
    if (target.target_name.empty())
        return true;
    target.identified = !find_mcu_by_name(shell, target.target_name, shell.connected).empty();
    return target.identified;
}

// 6 clocks a machine cycle: where the firmware reports it, and how, is a matter of the letter.
bool reports_double_speed(const Shell& shell)
{
    const std::string& letter = shell.target.fw_letter;
    if (letter == "A")
        return (shell.link.rx_buffer[22] & 8) != 0;
    if (letter == "C" || letter == "N" || letter == "O")
        return (shell.options.status_bytes[1] & 1) == 0;
    return false;
}

// These two stand in every status frame, however short.
void take_version(Shell& shell)
{
    const auto& rx = shell.link.rx_buffer;
    shell.target.fw_letter = std::string(1, static_cast<char>(rx[field::letter]));
    shell.target.fw_version = decode_version(rx[field::version]);
}

bool has_flags(const Shell& shell)
{
    return frame_length(shell) > 27 && shell.link.rx_buffer[field::version] > 0x25;
}

void take_firmware(Shell& shell)
{
    const auto& rx = shell.link.rx_buffer;
    LinkState& link = shell.link;
    if (has_flags(shell))
        shell.target.clock_doubled_flag = rx[field::flags] & 0x20; // before the clock is reported
    link.header_required = false; // no firmware of this table asks for it; a chip can, by its flags byte
    link.hdr_46_seen = false;
    link.hdr_b9_seen = false;

    decode_status_frame(shell, StatusLayout::power_up);
    shell.target.double_speed_on = reports_double_speed(shell);
    if (shell.target.identified && series_is_15_16(shell.connected.series))
        std::copy_n(rx.begin() + field::iap_flags, shell.rc.rc_saved.size(), shell.rc.rc_saved.begin());
}

bool id_was_readable(Shell& shell)
{
    const int least_length = shell.link.link_parity_on ? 58 : 57;
    if (frame_length(shell) < least_length || (shell.link.rx_buffer[field::iap_flags] & 1) == 0)
        return true;
    append_message(shell, "IAP read MCU ID is error!");
    beep(shell, 3);
    return false;
}

// Everything that a status frame with an id tells. False: the connection ends here, and why has been said.
bool identify(Shell& shell, Purpose purpose)
{
    look_up_id(shell);
    if (!take_connected_record(shell))
        return false;
    build_option_bytes(shell);
    take_firmware(shell);
    report_status(shell);
    clock_report(shell);
    if (!id_was_readable(shell))
        return false;
    return purpose == Purpose::read_only || frame_length(shell) <= 25 || model_check(shell);
}

void take_boot_size(Shell& shell)
{
    constexpr std::int16_t sizes[] = {0x400, 0x600, 0x800, 0xA00};
    const auto& rx = shell.link.rx_buffer;
    TargetFacts& target = shell.target;
    target.boot_size_known = false;
    if (!has_flags(shell))
        return;
    shell.link.header_required = (rx[field::flags] & 0x80) != 0;
    target.boot_size = has_no_boot_block(shell.connected) ? std::int16_t{0} : sizes[rx[field::flags] & 3];
    target.boot_size_known = true;
}

void read_status_repeatedly(Shell& shell)
{
    for (int call = 0; call < status_calls && !shell.link.stop_requested; ++call) {
        read_status(shell);
        if (shell.link.reply_ok)
            return;
    }
}

// The status of a chip whose first frame was too short to tell it. False: stopped, or no answer; said.
bool options_are_read(Shell& shell)
{
    read_status_repeatedly(shell);
    if (shell.link.stop_requested)
        report_stop(shell);
    else if (!shell.target.options_read_ok)
        report_connection_failed(shell, 3);
    return shell.target.options_read_ok && !shell.link.stop_requested;
}

bool read_short_status(Shell& shell)
{
    shell.MSComm1.clear_InBuffer();
    shell.MSComm1.clear_OutBuffer();
    append_message(shell, reading_options);
    return options_are_read(shell);
}

// Older chips want to hear five of these before they take other commands; they do not answer.
void send_ready_five_times(Shell& shell)
{
    for (int i = 0; i < 5; ++i) {
        board_send_command(shell, command::ready, 200, 0);
        wait_ms(shell, 200);
    }
    shell.Timer1.stop();
}

bool reach_target(Shell& shell, Purpose purpose)
{
    append_message(shell, connecting);
    std::string baud;
    if (!handshake(shell, purpose, baud))
        return false;
    if (!wire_record(shell).cap_new_protocol)
        send_ready_five_times(shell);
    if (purpose == Purpose::read_only)
        return true;
    if (shell.link.stop_requested) {
        report_stop(shell);
        return false;
    }
    if (!shell.target.status_has_options && !options_are_read(shell))
        return false;
    append_message(shell, std::string{in_language(shell, current_baud)} + baud + " bps.");
    return model_check(shell);
}

} // namespace

void connect_target(Shell& shell, Purpose purpose)
{
    shell.target.target_ok = false;
    shell.target.target_ok = reach_target(shell, purpose);
    if (!shell.target.target_ok)
        enable_buttons(shell);
}

bool handshake(Shell& shell, Purpose purpose, std::string& baud)
{
    forget_target(shell);
    shell.link.link_parity_even = shell.selected.cap_parity_even;
    shell.link.handshake_baud = number_text(number_in(shell.form.cobBaudMin.text()));
    if (!open_for_handshake(shell) || !call_until_power_up(shell))
        return false;

    settle_line(shell);
    measure_clock(shell);
    take_version(shell);
    if (frame_length(shell) > 24 && !identify(shell, purpose))
        return false;
    if (frame_length(shell) > 24 && purpose == Purpose::read_only) {
        shell.target.options_read_ok = true;
        return true;
    }
    take_boot_size(shell);
    if (purpose == Purpose::read_only)
        return read_short_status(shell);

    if (!shell.target.tl_mode_active)
        append_message(shell, connecting_again);
    return negotiate_baud(shell, baud);
}

void read_status(Shell& shell)
{
    shell.target.options_read_ok = false;
    for (int attempt = 0; attempt < 3 && !shell.link.stop_requested; ++attempt) {
        shell.MSComm1.clear_InBuffer();
        shell.MSComm1.clear_OutBuffer();
        wait_ms(shell, 50);
        expect_reply(shell);
        send_frame(shell, build_command_frame(command::read_status, {}, wire_check(shell)));
        if (wait_reply(shell, 900))
            break;
    }
    if (!shell.link.reply_ok)
        return;
    decode_status_frame(shell, StatusLayout::answer);
    shell.target.options_read_ok = true;
}

} // namespace vrk
