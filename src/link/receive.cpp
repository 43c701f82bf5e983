#include "link/receive.h"

#include "link/frame.h"
#include "link/port.h"

#include "form/waits.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::uint8_t from_target = 0x68;
constexpr std::uint8_t end_byte = 0x16;
constexpr int gathering_baud = 4800; // below it a frame takes long enough to be worth waiting for
constexpr int gathering_ms = 30;

std::uint8_t read_one(Shell& shell)
{
    shell.MSComm1.InputLen = 1;
    const auto byte = shell.MSComm1.Input();
    shell.MSComm1.InputLen = 0;
    return byte.empty() ? std::uint8_t{0} : byte[0];
}

void reset_frame(LinkState& link)
{
    link.reply_ok = false;
    link.demo_reply_ok = false;
    link.rx_count = 0;
    link.hdr_46_seen = false;
    link.hdr_b9_seen = false;
}

void drop_frame(LinkState& link)
{
    link.rx_buffer[0] = 0;
    reset_frame(link);
}

// Bytes past the end of the buffer are lost: no frame is as long.
void append_bytes(LinkState& link, std::span<const std::uint8_t> bytes)
{
    const auto at = static_cast<std::size_t>(link.rx_count);
    const std::size_t count = std::min(bytes.size(), LinkState::rx_size - at);
    std::copy_n(bytes.begin(), count, link.rx_buffer.begin() + static_cast<std::ptrdiff_t>(at));
    link.rx_count = static_cast<std::int16_t>(at + count);
}

// Reads bytes until 46 B9 has passed. False: the header is not complete and nothing waits.
bool header_passed(Shell& shell)
{
    LinkState& link = shell.link;
    while (!link.hdr_46_seen || !link.hdr_b9_seen) {
        if (shell.MSComm1.InBufferCount() == 0)
            return false;
        const std::uint8_t byte = read_one(shell);
        if (!link.hdr_46_seen) {
            link.hdr_46_seen = byte == 0x46;
            link.hdr_b9_seen = false;
        } else if (byte == 0xB9) {
            link.hdr_b9_seen = true;
        } else {
            link.hdr_46_seen = false;
        }
    }
    return true;
}

// Adds the waiting bytes to the frame; the first of a frame is the direction byte, all before it is dropped.
void collect(Shell& shell)
{
    LinkState& link = shell.link;
    auto chunk = shell.MSComm1.Input();
    if (!link.accept_frames)
        return;
    if (link.rx_count == 0) {
        const auto start = std::find(chunk.begin(), chunk.end(), from_target);
        chunk = chunk.subspan(static_cast<std::size_t>(start - chunk.begin()));
    }
    append_bytes(link, chunk);
}

} // namespace

void on_comm(Shell& shell)
{
    if (shell.MSComm1.CommEvent != CommControl::event_receive || shell.link.in_receive_event)
        return;
    shell.link.in_receive_event = true;
    if (shell.MSComm1.baud() < gathering_baud)
        wait_ms(shell, gathering_ms);
    if (shell.link.demo_mode)
        receive_demo(shell);
    else if (!shell.link.terminal_mode)
        receive_isp(shell);
    shell.link.in_receive_event = false;
}

void receive_isp(Shell& shell)
{
    LinkState& link = shell.link;
    shell.MSComm1.InputLen = 0;
    while (shell.MSComm1.InBufferCount() > 0) {
        if (link.header_required && link.rx_count == 0 && !header_passed(shell))
            return;
        collect(shell);
        if (link.rx_count < 3)
            continue; // the length byte has not come
        const std::int16_t length = link.rx_buffer[2];
        if (length < 1)
            return drop_frame(link);
        if (link.rx_count < length)
            continue;
        const auto frame = std::span<const std::uint8_t>{link.rx_buffer}.first(static_cast<std::size_t>(length));
        if (frame.back() != end_byte)
            return drop_frame(link);
        if (!reply_check_good(frame, wire_check(shell))) {
            link.reply_bad = true;
            return reset_frame(link);
        }
        link.reply_ok = true;
        link.hdr_46_seen = false;
        link.hdr_b9_seen = false;
        return;
    }
}

void receive_demo(Shell& shell)
{
    LinkState& link = shell.link;
    shell.MSComm1.InputLen = 0;
    while (shell.MSComm1.InBufferCount() > 0) {
        if (link.rx_count < 2) {
            const std::uint8_t wanted = link.rx_count == 0 ? 0x5A : 0xA5;
            const std::uint8_t byte = read_one(shell);
            if (byte == wanted)
                append_bytes(link, std::span{&byte, 1});
            else
                drop_frame(link);
            continue;
        }
        append_bytes(link, shell.MSComm1.Input());
        if (link.rx_count < 4)
            continue;
        const std::size_t length = link.rx_buffer[2] * 256U + link.rx_buffer[3];
        if (length == 0 || (static_cast<std::size_t>(link.rx_count) < length && length <= LinkState::rx_size))
            continue;
        if (length > LinkState::rx_size || link.rx_buffer[length - 1] != end_byte) {
            flush_link(shell);
            return drop_frame(link);
        }
        if (!demo_check_good(std::span<const std::uint8_t>{link.rx_buffer}.first(length)))
            return reset_frame(link);
        link.demo_reply_ok = true;
        return;
    }
}

} // namespace vrk
