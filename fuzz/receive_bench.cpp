#include "fuzz/receive_bench.h"

#include "session/session.h"

namespace fuzz {

namespace {

constexpr std::int64_t spacing_us = 7'000; // several arrivals within one wait of the receive event

void act(vrk::Session& session, Before before)
{
    switch (before) {
    case Before::nothing:
        return;
    case Before::flush:
        session.flush();
        session.rx.demo_reply_ok = false; // a flush leaves it to the sender
        return;
    case Before::expect_reply:
        session.rx.count = 0;
        session.rx.reply_ok = false;
        session.rx.demo_reply_ok = false;
        session.rx.accept_frames = true;
        return;
    case Before::read_frame:
        session.frame();
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
    if (state.count < 0 || static_cast<std::size_t>(state.count) > vrk::ReceiveState::buffer_size)
        return "count is " + std::to_string(state.count);
    return {};
}

std::string ReceiveBench::play(Input input, bool slow, const std::function<std::string()>& look)
{
    if (slow)
        link.port.set_line({2400, vrk::Parity::none, 8, 1});
    std::string complaint;
    std::int64_t at_us = 0;
    int to_come = 0;
    while (!input.empty()) {
        const std::uint8_t head = take_byte(input);
        const Input bytes = take_bytes(input, (head & 0x3FU) + 1U);
        ++to_come;
        at_us += spacing_us;
        link.loop.call_at(at_us, [this, head, bytes, &look, &complaint, &to_come] {
            act(link.session, static_cast<Before>(head >> 6));
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
    if (complaint.empty() && state.in_event)
        complaint = "the receive event never ended";
    return complaint;
}

void ReceiveBench::arrive_after_flush(Input frame)
{
    state.accept_frames = true;
    link.session.flush();
    state.demo_reply_ok = false;
    arrive(frame);
}

} // namespace fuzz
