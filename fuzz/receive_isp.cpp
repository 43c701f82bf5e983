// Replies of a boot loader or of the off-line board. How the link stands:
//   bit 0  46 B9 must come first
//   bit 1  the model has the long form, with a check of two bytes
//   bit 2  the off-line board, with a CRC
//   bit 3  bytes are thrown away at first
//   bit 4  slow baud: the receive event waits
//   bit 5  the long form is the connected chip's, not the selected model's
#include "fuzz/receive_bench.h"

#include <array>

namespace fuzz {

namespace {

enum class Form { one_byte_sum, two_byte_sum, crc };

// The check of a frame as the line's rules have it, from the direction byte to the byte before the check.
std::vector<std::uint8_t> check_of(Input checked, Form form)
{
    unsigned sum = 0;
    unsigned crc = 0xFFFF;
    for (const std::uint8_t byte : checked) {
        sum += byte;
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? crc / 2 ^ 0xA001U : crc / 2;
    }
    const auto low_byte = [](unsigned value) { return static_cast<std::uint8_t>(value % 256); };
    switch (form) {
    case Form::one_byte_sum:
        return {low_byte(sum)};
    case Form::two_byte_sum:
        return {low_byte(sum / 256), low_byte(sum)};
    case Form::crc:
        return {low_byte(crc), low_byte(crc / 256)};
    }
    return {};
}

bool is_good_frame(Input bytes, Form form)
{
    if (bytes.size() < 3 || bytes[0] != 0x68 || bytes[2] > bytes.size())
        return false;
    const Input frame = bytes.first(bytes[2]);
    const std::size_t tail = form == Form::one_byte_sum ? 2 : 3;
    if (frame.size() < tail || frame.back() != 0x16)
        return false;
    const auto check = check_of(frame.first(frame.size() - tail), form);
    return std::equal(check.begin(), check.end(), frame.end() - static_cast<std::ptrdiff_t>(tail));
}

std::vector<std::uint8_t> good_reply(Form form)
{
    const auto length = static_cast<std::uint8_t>(form == Form::one_byte_sum ? 6 : 7);
    std::vector<std::uint8_t> frame = {0x68, 0x00, length, 0x80};
    const auto check = check_of(frame, form);
    frame.insert(frame.end(), check.begin(), check.end());
    frame.push_back(0x16);
    frame.insert(frame.begin(), {0x46, 0xB9});
    return frame;
}

} // namespace

std::string fuzz_receive_isp(Input input)
{
    const std::uint8_t how = take_byte(input);
    ReceiveBench bench;
    vrk::ReceiveState& state = bench.state;
    state.header_required = (how & 1) != 0;
    bench.link.session.board_mode = (how & 4) != 0;
    state.accept_frames = (how & 8) == 0;
    bench.link.session.identified = (how & 32) != 0;
    vrk::McuRecord& model = (how & 32) != 0 ? bench.link.session.connected : bench.link.session.selected;
    model.cap_long_frame = (how & 2) != 0;
    const Form form = (how & 4) != 0 ? Form::crc : (how & 2) != 0 ? Form::two_byte_sum : Form::one_byte_sum;

    const std::string complaint = bench.play(input, (how & 16) != 0, [&]() -> std::string {
        const Input received = Input{state.buffer}.first(static_cast<std::size_t>(state.count));
        if (state.reply_ok && !is_good_frame(received, form))
            return "reply_ok without a good frame";
        return state.demo_reply_ok ? "a reply of the boot loader passed as one of user code" : "";
    });
    if (!complaint.empty())
        return complaint;

    bench.arrive_after_flush(good_reply(form));
    while (state.in_event)
        bench.link.loop.yield();
    return state.reply_ok ? "" : "a good reply behind a flush was not taken";
}

} // namespace fuzz
