#include "sim/demo_program.h"

#include "sim/hex_text.h"
#include "sim/waveform.h"

#include <numeric>

namespace sim {

namespace {

constexpr std::uint8_t connect_code = 0xB0;
constexpr std::uint8_t leave_code = 0xB1;
constexpr std::uint8_t erase_code = 0xB2;
constexpr std::uint8_t write_code = 0xB3;
constexpr std::uint8_t write_again_code = 0xB4;
constexpr std::uint8_t identity_code = 0xB5;
constexpr std::size_t command_size = 8;
constexpr std::size_t block_overhead = 14; // of a write frame, beside its data
constexpr std::size_t longest_frame = 142;

unsigned sum_of(std::span<const std::uint8_t> bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), 0U) & 0xFFFFU;
}

} // namespace

void DemoProgram::power(bool on)
{
    switch_power(on);
    connected_ = erased_ = runs_code_ = false;
    if (on)
        surroundings_->set_line(setup_.line, false);
}

void DemoProgram::heard(std::uint8_t byte)
{
    frame_.push_back(byte);
    if (frame_[0] != 0x5A || (frame_.size() == 2 && byte != 0xA5)) {
        frame_.clear();
        return;
    }
    if (frame_.size() < 4)
        return;
    const std::size_t length = frame_[2] * 256U + frame_[3];
    if (length < command_size || length > longest_frame) {
        if (!harmed_)
            complain("frame: length " + hex(length, 4));
        frame_.clear();
        return;
    }
    if (frame_.size() < length)
        return;
    const unsigned sum = sum_of(std::span{frame_}.first(length - 3));
    if (frame_[length - 3] == sum / 256 && frame_[length - 2] == sum % 256 && frame_[length - 1] == 0x16)
        take();
    else if (!harmed_)
        complain("frame: " + hex_bytes(frame_));
    frame_.clear();
}

void DemoProgram::take()
{
    const std::uint8_t code = frame_[4];
    if (!takes(code, true))
        return;
    if (code == write_code || code == write_again_code)
        return take_block();
    if (frame_.size() != command_size)
        return complain("command: " + hex_bytes(frame_));
    if (code != connect_code && !connected_)
        complain("command " + hex(code, 2) + " before it was called");
    switch (code) {
    case connect_code:
        connected_ = true;
        return answer({}, 0);
    case identity_code:
        return answer(
            {0, static_cast<std::uint8_t>(setup_.code >> 8U), static_cast<std::uint8_t>(setup_.code), setup_.option},
            0);
    case erase_code:
        flash_.erase(0, flash_.size());
        erased_ = true;
        return answer({}, setup_.erase_us);
    case leave_code:
        runs_code_ = true;
        return;
    default:
        complain("unknown command: " + hex_bytes(frame_));
    }
}

void DemoProgram::take_block()
{
    const std::size_t address =
        (std::size_t{frame_[5]} << 24U) + (std::size_t{frame_[6]} << 16U) + frame_[7] * 256U + frame_[8];
    const std::size_t count = frame_[9] * 256U + frame_[10];
    if (frame_.size() != count + block_overhead || count == 0)
        return complain("block: " + hex_bytes(frame_));
    if (!erased_)
        complain("block " + hex(address, 4) + " without an erasure");
    const auto data = std::span{frame_}.subspan(11, count);
    const unsigned sum = sum_of(data) + (wrong_sums > 0 ? 1 : 0);
    wrong_sums -= wrong_sums > 0 ? 1 : 0;
    if (flash_.write(address, data))
        answer({static_cast<std::uint8_t>(sum / 256), static_cast<std::uint8_t>(sum)}, setup_.write_us);
}

void DemoProgram::answer(Bytes payload, std::int64_t work_us)
{
    const std::size_t length = payload.size() + command_size;
    Bytes frame = {0x5A, 0xA5, static_cast<std::uint8_t>(length / 256), static_cast<std::uint8_t>(length), frame_[4]};
    frame.insert(frame.end(), payload.begin(), payload.end());
    const unsigned sum = sum_of(frame);
    frame.insert(frame.end(), {static_cast<std::uint8_t>(sum / 256), static_cast<std::uint8_t>(sum), 0x16});
    send_after_us(setup_.answer_us + work_us, frame);
}

} // namespace sim
