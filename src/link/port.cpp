#include "link/port.h"

#include "form/waits.h"

#include <algorithm>

namespace vrk {

const McuRecord& wire_record(const Shell& shell)
{
    return shell.target.identified ? shell.connected : shell.selected;
}

Check wire_check(const Shell& shell)
{
    if (shell.link.board_mode)
        return Check::crc16;
    return wire_record(shell).cap_long_frame ? Check::sum16 : Check::sum8;
}

std::string reported_id(const Shell& shell)
{
    return shell.target.target_id_hi + shell.target.target_id_lo;
}

bool setMSCommSettings(Shell& shell, const std::string& baud)
{
    const char* parity = !shell.link.link_parity_on ? "n" : shell.link.link_parity_even ? "e" : "o";
    return shell.MSComm1.set_Settings(baud + "," + parity + ",8,1");
}

void set_comm_port(Shell& shell)
{
    shell.MSComm1.CommPort = shell.form.combCommPort.index_chosen() + 1;
}

bool open_link(Shell& shell)
{
    shell.MSComm1.close();
    set_comm_port(shell);
    return shell.MSComm1.open() && shell.MSComm1.PortOpen();
}

bool close_link(Shell& shell)
{
    for (int attempt = 0; attempt < 3 && shell.MSComm1.PortOpen(); ++attempt)
        shell.MSComm1.close();
    show_port_open(shell, false);
    return !shell.MSComm1.PortOpen();
}

void show_port_open(Shell& shell, bool open)
{
    shell.form.imgOpen_sys.set_visible(open);
    shell.form.imgNotOpen_sys.set_visible(!open);
}

void flush_link(Shell& shell)
{
    CommControl& port = shell.MSComm1;
    port.InputLen = 0;
    port.clear_InBuffer();
    port.clear_OutBuffer();
    if (port.PortOpen()) {
        port.Input();
    } else if (port.open()) {
        port.Input();
        // Four characters against the whole text: with both at 115200 they differ too and the port is closed, which
        // harms nobody, since every sequence opens it for itself.
        if (shell.form.cobBaudMax.text().substr(0, 4) != shell.link.handshake_baud)
            port.close();
    }
    shell.link.rx_count = 0;
    shell.link.reply_ok = false;
    shell.link.hdr_46_seen = false;
}

void reset_port_properties(Shell& shell)
{
    CommControl& port = shell.MSComm1;
    port.clear_InBuffer();
    port.InputLen = 0;
    port.NullDiscard = false;
    port.clear_OutBuffer();
    port.RThreshold = 1;
    port.SThreshold = 0;
    port.EOFEnable = false;
    port.InputMode = 1;
}

void send_frame(Shell& shell, std::span<const std::uint8_t> frame)
{
    shell.MSComm1.Output(frame);
    if (shell.MSComm1.OutBufferCount() > 0)
        shell.platform.loop.run_due();
    wait_ms(shell, 3);
}

void expect_reply(Shell& shell)
{
    shell.link.rx_count = 0;
    shell.link.reply_ok = false;
    shell.link.accept_frames = true;
    wait_ms(shell, 5);
}

bool send_short_command(Shell& shell, std::uint8_t code)
{
    const Bytes frame = build_short_frame(code, wire_check(shell));
    if (frame.empty())
        return false;
    reset_port_properties(shell);
    if (!shell.MSComm1.PortOpen() && !open_link(shell))
        return false;
    flush_link(shell);
    return shell.MSComm1.Output(frame);
}

void board_send_command(Shell& shell, std::uint8_t code, int timeout_ms, std::uint8_t parameter)
{
    flush_link(shell);
    shell.link.reply_timeout = false;
    shell.link.reply_bad = false;
    shell.link.reply_ok = false;
    shell.Timer1.start(timeout_ms);
    shell.Timer2.stop();
    send_frame(shell, build_model_frame(code, parameter, wire_record(shell), reported_id(shell), wire_check(shell)));
}

bool wait_model_reply(Shell& shell)
{
    const LinkState& link = shell.link;
    while (!link.reply_timeout && !link.reply_bad && !link.reply_ok && !link.stop_requested)
        shell.platform.loop.yield();
    shell.Timer1.stop();
    return link.reply_ok;
}

void send_demo_command(Shell& shell, std::uint8_t code)
{
    while (shell.MSComm1.OutBufferCount() > 0)
        shell.platform.loop.yield();
    wait_ms(shell, 20);
    shell.MSComm1.Output(build_demo_frame(code, {}));
}

std::span<const std::uint8_t> read_frame(Shell& shell)
{
    LinkState& link = shell.link;
    const auto count = static_cast<std::size_t>(link.rx_count);
    std::copy_n(link.rx_buffer.begin(), count, link.reply_frame.begin());
    return std::span{link.reply_frame}.first(count);
}

} // namespace vrk
