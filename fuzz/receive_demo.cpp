// Frames of a chip that runs user code. How the link stands:
//   bit 0  slow baud: the receive event waits
#include "fuzz/receive_bench.h"

#include <numeric>

namespace fuzz {

namespace {

// 5A A5, length of the whole frame, and the low 16 bits of the sum before the end byte.
bool is_good_frame(Input bytes)
{
    if (bytes.size() < 7 || bytes[0] != 0x5A || bytes[1] != 0xA5 || bytes[2] * 256U + bytes[3] > bytes.size())
        return false;
    const Input frame = bytes.first(bytes[2] * 256U + bytes[3]);
    if (frame.size() < 4 || frame.back() != 0x16)
        return false;
    const Input checked = frame.first(frame.size() - 3);
    const unsigned sum = std::accumulate(checked.begin(), checked.end(), 0U);
    return frame[frame.size() - 3] == sum / 256 % 256 && frame[frame.size() - 2] == sum % 256;
}

constexpr std::uint8_t good_reply[] = {0x5A, 0xA5, 0x00, 0x08, 0xB0, 0x01, 0xB7, 0x16};

} // namespace

std::string fuzz_receive_demo(Input input)
{
    const std::uint8_t how = take_byte(input);
    ReceiveBench bench;
    vrk::ReceiveState& state = bench.state;
    bench.link.session.demo_mode = true;

    const std::string complaint = bench.play(input, (how & 1) != 0, [&]() -> std::string {
        const Input received = Input{state.buffer}.first(static_cast<std::size_t>(state.count));
        if (state.demo_reply_ok && !is_good_frame(received))
            return "demo_reply_ok without a good frame";
        return state.reply_ok ? "a frame of user code passed as a reply of the boot loader" : "";
    });
    if (!complaint.empty())
        return complaint;

    bench.arrive_after_flush(good_reply);
    while (state.in_event)
        bench.link.loop.yield();
    return state.demo_reply_ok ? "" : "a good reply behind a flush was not taken";
}

} // namespace fuzz
