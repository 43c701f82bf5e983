#include "session/receive.h"

#include "session/frame.h"
#include "session/session.h"

#include <algorithm>

namespace vrk {

namespace {

constexpr std::uint8_t from_target = 0x68;
constexpr std::uint8_t end_byte = 0x16;
constexpr int gathering_baud = 4800; // below it a frame takes long enough to be worth waiting for
constexpr int gathering_ms = 30;

std::uint8_t read_one(Port& port)
{
    const auto byte = port.take(1);
    return byte.empty() ? std::uint8_t{0} : byte[0];
}

void reset_frame(ReceiveState& rx)
{
    rx.reply_ok = false;
    rx.demo_reply_ok = false;
    rx.count = 0;
    rx.hdr_46_seen = false;
    rx.hdr_b9_seen = false;
}

void drop_frame(ReceiveState& rx)
{
    rx.buffer[0] = 0;
    reset_frame(rx);
}

// Bytes past the end of the buffer are lost: no frame is as long.
void append_bytes(ReceiveState& rx, std::span<const std::uint8_t> bytes)
{
    const auto at = static_cast<std::size_t>(rx.count);
    const std::size_t count = std::min(bytes.size(), ReceiveState::buffer_size - at);
    std::copy_n(bytes.begin(), count, rx.buffer.begin() + static_cast<std::ptrdiff_t>(at));
    rx.count = static_cast<std::int16_t>(at + count);
}

// Reads bytes until 46 B9 has passed. False: the header is not complete and nothing waits.
bool header_passed(Session& session)
{
    ReceiveState& rx = session.rx;
    while (!rx.hdr_46_seen || !rx.hdr_b9_seen) {
        if (session.port.waiting() == 0)
            return false;
        const std::uint8_t byte = read_one(session.port);
        if (!rx.hdr_46_seen) {
            rx.hdr_46_seen = byte == 0x46;
            rx.hdr_b9_seen = false;
        } else if (byte == 0xB9) {
            rx.hdr_b9_seen = true;
        } else {
            rx.hdr_46_seen = false;
        }
    }
    return true;
}

// Adds the waiting bytes to the frame; the first of a frame is the direction byte, all before it is dropped.
void collect(Session& session)
{
    ReceiveState& rx = session.rx;
    auto chunk = session.port.take();
    if (!rx.accept_frames)
        return;
    if (rx.count == 0) {
        const auto start = std::find(chunk.begin(), chunk.end(), from_target);
        chunk = chunk.subspan(static_cast<std::size_t>(start - chunk.begin()));
    }
    append_bytes(rx, chunk);
}

} // namespace

void on_receive(Session& session)
{
    session.rx.heard = true;
    if (session.rx.in_event)
        return;
    session.rx.in_event = true;
    if (session.port.line().baud < gathering_baud)
        session.wait(gathering_ms);
    if (session.demo_mode)
        receive_demo(session);
    else
        receive_isp(session);
    session.rx.in_event = false;
}

void receive_isp(Session& session)
{
    ReceiveState& rx = session.rx;
    while (session.port.waiting() > 0) {
        if (rx.header_required && rx.count == 0 && !header_passed(session))
            return;
        collect(session);
        if (rx.count < 3)
            continue; // the length byte has not come
        const std::int16_t length = rx.buffer[2];
        if (length < 1)
            return drop_frame(rx);
        if (rx.count < length)
            continue;
        const auto frame = std::span<const std::uint8_t>{rx.buffer}.first(static_cast<std::size_t>(length));
        if (frame.back() != end_byte)
            return drop_frame(rx);
        if (!reply_check_good(frame, session.check())) {
            rx.reply_bad = true;
            return reset_frame(rx);
        }
        rx.reply_ok = true;
        rx.hdr_46_seen = false;
        rx.hdr_b9_seen = false;
        return;
    }
}

void receive_demo(Session& session)
{
    ReceiveState& rx = session.rx;
    while (session.port.waiting() > 0) {
        if (rx.count < 2) {
            const std::uint8_t wanted = rx.count == 0 ? 0x5A : 0xA5;
            const std::uint8_t byte = read_one(session.port);
            if (byte == wanted)
                append_bytes(rx, std::span{&byte, 1});
            else
                drop_frame(rx);
            continue;
        }
        append_bytes(rx, session.port.take());
        if (rx.count < 4)
            continue;
        const std::size_t length = rx.buffer[2] * 256U + rx.buffer[3];
        if (length == 0 || (static_cast<std::size_t>(rx.count) < length && length <= ReceiveState::buffer_size))
            continue;
        if (length > ReceiveState::buffer_size || rx.buffer[length - 1] != end_byte) {
            session.flush();
            return drop_frame(rx);
        }
        if (!demo_check_good(std::span<const std::uint8_t>{rx.buffer}.first(length)))
            return reset_frame(rx);
        rx.demo_reply_ok = true;
        return;
    }
}

} // namespace vrk
