#include "fuzz/receive_bench.h"

#include "link/port.h"

namespace fuzz {

namespace {

constexpr std::int64_t spacing_us = 7'000; // several arrivals within one wait of the receive event

void act(vrk::Shell& shell, Before before)
{
    switch (before) {
    case Before::nothing:
        return;
    case Before::flush:
        vrk::flush_link(shell);
        shell.link.demo_reply_ok = false; // flush_link leaves it to the sender
        return;
    case Before::expect_reply:
        shell.link.rx_count = 0;
        shell.link.reply_ok = false;
        shell.link.demo_reply_ok = false;
        shell.link.accept_frames = true;
        return;
    case Before::read_frame:
        vrk::read_frame(shell);
        return;
    }
}

} // namespace

void ReceiveBench::arrive(Input bytes)
{
    link.ports.made->in.insert(link.ports.made->in.end(), bytes.begin(), bytes.end());
    link.ports.made->on_receive();
}

std::string ReceiveBench::common_complaint() const
{
    if (state.rx_count < 0 || static_cast<std::size_t>(state.rx_count) > vrk::LinkState::rx_size)
        return "rx_count is " + std::to_string(state.rx_count);
    return {};
}

std::string ReceiveBench::play(Input input, bool slow, const std::function<std::string()>& look)
{
    if (slow)
        link.shell.MSComm1.set_Settings("2400,n,8,1");
    std::string complaint;
    std::int64_t at_us = 0;
    int to_come = 0;
    while (!input.empty()) {
        const std::uint8_t head = take_byte(input);
        const Input bytes = take_bytes(input, (head & 0x3FU) + 1U);
        ++to_come;
        at_us += spacing_us;
        link.loop.call_at(at_us, [this, head, bytes, &look, &complaint, &to_come] {
            act(link.shell, static_cast<Before>(head >> 6));
            arrive(bytes);
            if (complaint.empty())
                complaint = common_complaint();
            if (complaint.empty())
                complaint = look();
            --to_come;
        });
    }
    while (to_come > 0)
        link.loop.yield();
    if (complaint.empty() && state.in_receive_event)
        complaint = "the receive event never ended";
    return complaint;
}

void ReceiveBench::arrive_after_flush(Input frame)
{
    state.accept_frames = true;
    vrk::flush_link(link.shell);
    state.demo_reply_ok = false;
    arrive(frame);
}

} // namespace fuzz
