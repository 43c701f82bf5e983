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

int frame_length(const MainForm& form) { return form.link.rx_buffer[2]; }

void forget_target(MainForm& form)
{
    form.target = TargetFacts{};
    form.connected = McuRecord{};
    form.beside = beside_record(form.selected); // a chip that was taken for another may have left its own
}

bool open_for_handshake(MainForm& form)
{
    flush_link(form);
    close_link(form);
    set_comm_port(form);
    form.link.link_parity_on = form.selected.cap_parity;
    if (!setMSCommSettings(form, "1200") || !setMSCommSettings(form, form.link.handshake_baud)
        || !form.MSComm1.open()) {
        beep(form, 3);
        append_message(form, port_failed);
        append_message(form, port_failed_why);
        return false;
    }
    form.MSComm1.clear_InBuffer();
    form.MSComm1.clear_OutBuffer();
    show_port_open(form, true);
    return true;
}

// Sync pairs go out until the loader answers or the user stops. No time limit, on purpose: the hand at the power switch
// may be slow. Timer9 speaks up after 4 s.
void call_by_sync(MainForm& form)
{
    while (!form.link.reply_ok && !form.link.stop_requested) {
        form.MSComm1.Output(sync_pair);
        wait_reply(form, sync_spacing_ms);
    }
}

void call_by_probe(MainForm& form)
{
    form.MSComm1.close();
    form.link.link_parity_on = false;
    setMSCommSettings(form, "115200");
    form.MSComm1.open();
    form.MSComm1.clear_InBuffer();
    form.MSComm1.clear_OutBuffer();
    flush_link(form);
    while (!form.link.reply_ok && !form.link.stop_requested) {
        send_short_command(form, command::probe);
        wait_reply(form, probe_spacing_ms);
    }
}

bool call_until_power_up(MainForm& form)
{
    form.link.header_required = false;
    form.Timer9.start();
    form.link.accept_frames = true;
    if (form.cheTL.value())
        call_by_probe(form);
    else
        call_by_sync(form);
    if (form.link.stop_requested) {
        form.Timer9.stop();
        report_stop(form);
        return false;
    }
    return true;
}

void settle_line(MainForm& form)
{
    form.MSComm1.clear_InBuffer();
    form.MSComm1.clear_OutBuffer();
    form.link.link_parity_on = !form.cheTL.value() && form.selected.cap_parity;
    setMSCommSettings(form, form.cheTL.value() ? "115200" : form.link.handshake_baud);
    form.Timer9.stop();
}

void measure_clock(MainForm& form)
{
    TargetFacts& target = form.target;
    target.tl_mode_active = form.cheTL.value();
    target.mcu_clock_hz
        = measured_clock_hz(sum_of_counts(form.link.rx_buffer), form.link.handshake_baud, target.tl_mode_active);
    target.mcu_clock_saved = target.mcu_clock_hz;
    target.status_has_options = false;
    target.double_speed_on = false;
}

// The model by its id, or by the second id that some chips send, which goes first if the catalogue has it.
void look_up_id(MainForm& form)
{
    const auto& rx = form.link.rx_buffer;
    TargetFacts& target = form.target;
    target.target_id_hi = hex_text(rx[field::id_high], 2);
    target.status_has_options = true;
    if (frame_length(form) > 25) {
        if (rx[field::id_high] >= two_byte_ids_from)
            target.target_id_lo = hex_text(rx[field::id_low], 2);
        target.target_name = find_mcu_by_id(form.mcu_table, reported_id(form)).name;
    }
    if (frame_length(form) > 58 && rx[field::long_id] > 0) {
        target.target_id_alt = hex_text(rx[field::long_id], 2) + hex_text(rx[field::long_id + 1], 2);
        const std::string name = find_mcu_by_id(form.mcu_table, target.target_id_alt).name;
        if (!name.empty())
            target.target_name = name;
    }
}

// False: the name is not in the catalogue.
bool take_connected_record(MainForm& form)
{
    TargetFacts& target = form.target;
    if (target.target_name.empty())
        return true;
    target.identified = !find_mcu_by_name(form, target.target_name, form.connected).empty();
    return target.identified;
}

// 6 clocks a machine cycle: where the firmware reports it, and how, is a matter of the letter.
bool reports_double_speed(const MainForm& form)
{
    const std::string& letter = form.target.fw_letter;
    if (letter == "A")
        return (form.link.rx_buffer[22] & 8) != 0;
    if (letter == "C" || letter == "N" || letter == "O")
        return (form.options.status_bytes[1] & 1) == 0;
    return false;
}

// These two stand in every status frame, however short.
void take_version(MainForm& form)
{
    const auto& rx = form.link.rx_buffer;
    form.target.fw_letter = std::string(1, static_cast<char>(rx[field::letter]));
    form.target.fw_version = decode_version(rx[field::version]);
}

bool has_flags(const MainForm& form)
{
    return frame_length(form) > 27 && form.link.rx_buffer[field::version] > 0x25;
}

void take_firmware(MainForm& form)
{
    const auto& rx = form.link.rx_buffer;
    LinkState& link = form.link;
    if (has_flags(form))
        form.target.clock_doubled_flag = rx[field::flags] & 0x20; // before the clock is reported
    link.header_required = false; // no firmware of this table asks for it; a chip can, by its flags byte
    link.hdr_46_seen = false;
    link.hdr_b9_seen = false;

    decode_status_frame(form, StatusLayout::power_up);
    form.target.double_speed_on = reports_double_speed(form);
    if (form.target.identified && series_is_15_16(form.connected.series))
        std::copy_n(rx.begin() + field::iap_flags, form.rc.rc_saved.size(), form.rc.rc_saved.begin());
}

bool id_was_readable(MainForm& form)
{
    const int least_length = form.link.link_parity_on ? 58 : 57;
    if (frame_length(form) < least_length || (form.link.rx_buffer[field::iap_flags] & 1) == 0)
        return true;
    append_message(form, "IAP read MCU ID is error!");
    beep(form, 3);
    return false;
}

// Everything that a status frame with an id tells. False: the connection ends here, and why has been said.
bool identify(MainForm& form, Purpose purpose)
{
    look_up_id(form);
    if (!take_connected_record(form))
        return false;
    build_option_bytes(form);
    take_firmware(form);
    report_status(form);
    clock_report(form);
    if (!id_was_readable(form))
        return false;
    return purpose == Purpose::read_only || frame_length(form) <= 25 || model_check(form);
}

void take_boot_size(MainForm& form)
{
    constexpr std::int16_t sizes[] = {0x400, 0x600, 0x800, 0xA00};
    const auto& rx = form.link.rx_buffer;
    TargetFacts& target = form.target;
    target.boot_size_known = false;
    if (!has_flags(form))
        return;
    form.link.header_required = (rx[field::flags] & 0x80) != 0;
    target.boot_size = has_no_boot_block(form.connected) ? std::int16_t{0} : sizes[rx[field::flags] & 3];
    target.boot_size_known = true;
}

void read_status_repeatedly(MainForm& form)
{
    for (int call = 0; call < status_calls && !form.link.stop_requested; ++call) {
        read_status(form);
        if (form.link.reply_ok)
            return;
    }
}

// The status of a chip whose first frame was too short to tell it. False: stopped, or no answer; said.
bool options_are_read(MainForm& form)
{
    read_status_repeatedly(form);
    if (form.link.stop_requested)
        report_stop(form);
    else if (!form.target.options_read_ok)
        report_connection_failed(form, 3);
    return form.target.options_read_ok && !form.link.stop_requested;
}

bool read_short_status(MainForm& form)
{
    form.MSComm1.clear_InBuffer();
    form.MSComm1.clear_OutBuffer();
    append_message(form, reading_options);
    return options_are_read(form);
}

// Older chips want to hear five of these before they take other commands; they do not answer.
void send_ready_five_times(MainForm& form)
{
    for (int i = 0; i < 5; ++i) {
        board_send_command(form, command::ready, 200, 0);
        wait_ms(form, 200);
    }
    form.Timer1.stop();
}

bool reach_target(MainForm& form, Purpose purpose)
{
    append_message(form, connecting);
    std::string baud;
    if (!handshake(form, purpose, baud))
        return false;
    if (!wire_record(form).cap_new_protocol)
        send_ready_five_times(form);
    if (purpose == Purpose::read_only)
        return true;
    if (form.link.stop_requested) {
        report_stop(form);
        return false;
    }
    if (!form.target.status_has_options && !options_are_read(form))
        return false;
    append_message(form, std::string{in_language(form, current_baud)} + baud + " bps.");
    return model_check(form);
}

} // namespace

void connect_target(MainForm& form, Purpose purpose)
{
    form.target.target_ok = false;
    form.target.target_ok = reach_target(form, purpose);
    if (!form.target.target_ok)
        enable_buttons(form);
}

bool handshake(MainForm& form, Purpose purpose, std::string& baud)
{
    forget_target(form);
    form.link.link_parity_even = form.selected.cap_parity_even;
    form.link.handshake_baud = number_text(number_in(form.cobBaudMin.text()));
    if (!open_for_handshake(form) || !call_until_power_up(form))
        return false;

    settle_line(form);
    measure_clock(form);
    take_version(form);
    if (frame_length(form) > 24 && !identify(form, purpose))
        return false;
    if (frame_length(form) > 24 && purpose == Purpose::read_only) {
        form.target.options_read_ok = true;
        return true;
    }
    take_boot_size(form);
    if (purpose == Purpose::read_only)
        return read_short_status(form);

    if (!form.target.tl_mode_active)
        append_message(form, connecting_again);
    return negotiate_baud(form, baud);
}

void read_status(MainForm& form)
{
    form.target.options_read_ok = false;
    for (int attempt = 0; attempt < 3 && !form.link.stop_requested; ++attempt) {
        form.MSComm1.clear_InBuffer();
        form.MSComm1.clear_OutBuffer();
        wait_ms(form, 50);
        expect_reply(form);
        send_frame(form, build_command_frame(command::read_status, {}, wire_check(form)));
        if (wait_reply(form, 900))
            break;
    }
    if (!form.link.reply_ok)
        return;
    decode_status_frame(form, StatusLayout::answer);
    form.target.options_read_ok = true;
}

} // namespace vrk
