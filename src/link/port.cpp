#include "link/port.h"

#include "form/waits.h"

#include <algorithm>

namespace vrk {

const McuRecord& wire_record(const MainForm& form)
{
    return form.target.identified ? form.connected : form.selected;
}

Check wire_check(const MainForm& form)
{
    if (form.link.board_mode)
        return Check::crc16;
    return wire_record(form).cap_long_frame ? Check::sum16 : Check::sum8;
}

std::string reported_id(const MainForm& form)
{
    return form.target.target_id_hi + form.target.target_id_lo;
}

bool setMSCommSettings(MainForm& form, const std::string& baud)
{
    const char* parity = !form.link.link_parity_on ? "n" : form.link.link_parity_even ? "e" : "o";
    return form.MSComm1.set_Settings(baud + "," + parity + ",8,1");
}

void set_comm_port(MainForm& form)
{
    form.MSComm1.CommPort = form.combCommPort.index_chosen() + 1;
}

bool open_link(MainForm& form)
{
    form.MSComm1.close();
    set_comm_port(form);
    return form.MSComm1.open() && form.MSComm1.PortOpen();
}

bool close_link(MainForm& form)
{
    for (int attempt = 0; attempt < 3 && form.MSComm1.PortOpen(); ++attempt)
        form.MSComm1.close();
    show_port_open(form, false);
    return !form.MSComm1.PortOpen();
}

void show_port_open(MainForm& form, bool open)
{
    form.imgOpen_sys.set_visible(open);
    form.imgNotOpen_sys.set_visible(!open);
}

void flush_link(MainForm& form)
{
    CommControl& port = form.MSComm1;
    port.InputLen = 0;
    port.clear_InBuffer();
    port.clear_OutBuffer();
    if (port.PortOpen()) {
        port.Input();
    } else if (port.open()) {
        port.Input();
        // Four characters against the whole text: with both at 115200 they differ too and the port is closed, which
        // harms nobody, since every sequence opens it for itself.
        if (form.cobBaudMax.text().substr(0, 4) != form.link.handshake_baud)
            port.close();
    }
    form.link.rx_count = 0;
    form.link.reply_ok = false;
    form.link.hdr_46_seen = false;
}

void reset_port_properties(MainForm& form)
{
    CommControl& port = form.MSComm1;
    port.clear_InBuffer();
    port.InputLen = 0;
    port.NullDiscard = false;
    port.clear_OutBuffer();
    port.RThreshold = 1;
    port.SThreshold = 0;
    port.EOFEnable = false;
    port.InputMode = 1;
}

void send_frame(MainForm& form, std::span<const std::uint8_t> frame)
{
    form.MSComm1.Output(frame);
    if (form.MSComm1.OutBufferCount() > 0)
        form.platform.loop.run_due();
    wait_ms(form, 3);
}

void expect_reply(MainForm& form)
{
    form.link.rx_count = 0;
    form.link.reply_ok = false;
    form.link.accept_frames = true;
    wait_ms(form, 5);
}

bool send_short_command(MainForm& form, std::uint8_t code)
{
    const Bytes frame = build_short_frame(code, wire_check(form));
    if (frame.empty())
        return false;
    reset_port_properties(form);
    if (!form.MSComm1.PortOpen() && !open_link(form))
        return false;
    flush_link(form);
    return form.MSComm1.Output(frame);
}

void board_send_command(MainForm& form, std::uint8_t code, int timeout_ms, std::uint8_t parameter)
{
    flush_link(form);
    form.link.reply_timeout = false;
    form.link.reply_bad = false;
    form.link.reply_ok = false;
    form.Timer1.start(timeout_ms);
    form.Timer2.stop();
    send_frame(form, build_model_frame(code, parameter, wire_record(form), reported_id(form), wire_check(form)));
}

bool wait_model_reply(MainForm& form)
{
    const LinkState& link = form.link;
    while (!link.reply_timeout && !link.reply_bad && !link.reply_ok && !link.stop_requested)
        form.platform.loop.yield();
    form.Timer1.stop();
    return link.reply_ok;
}

void send_demo_command(MainForm& form, std::uint8_t code)
{
    while (form.MSComm1.OutBufferCount() > 0)
        form.platform.loop.yield();
    wait_ms(form, 20);
    form.MSComm1.Output(build_demo_frame(code, {}));
}

std::span<const std::uint8_t> read_frame(MainForm& form)
{
    LinkState& link = form.link;
    const auto count = static_cast<std::size_t>(link.rx_count);
    std::copy_n(link.rx_buffer.begin(), count, link.reply_frame.begin());
    return std::span{link.reply_frame}.first(count);
}

} // namespace vrk
