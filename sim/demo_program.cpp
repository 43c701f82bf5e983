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

std::string DemoProgram::violations() const
{
    std::string text;
    for (const std::string& line : violations_)
        text += line + "\n";
    return text;
}

int DemoProgram::frame_count(std::uint8_t code) const
{
    const auto found = counts_.find(code);
    return found == counts_.end() ? 0 : found->second;
}

void DemoProgram::power(bool on)
{
    ++epoch_;
    powered_ = on;
    busy_ = connected_ = erased_ = runs_code_ = false;
    frame_.clear();
    if (on) {
        surroundings_->set_line(setup_.line, false);
    } else {
        surroundings_->stop_sending();
        surroundings_->stop_listening();
    }
}

void DemoProgram::receive(const Arrival& arrival)
{
    if (!powered_ || busy_ || runs_code_)
        return;
    if (frame_.empty())
        harmed_ = false;
    harmed_ |= arrival.tampered || arrival.parity_error || arrival.framing_error;
    if (!arrival.parity_error && !arrival.framing_error)
        heard(arrival.value);
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
    ++counts_[code];
    frames_.push_back(frame_);
    if (on_frame)
        on_frame(code);
    if (!powered_)
        return;
    if (deaf_to[code] > 0) {
        --deaf_to[code];
        return;
    }
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

    const auto later = [this](std::int64_t delay_ns, std::function<void()> work) {
        surroundings_->call_at(surroundings_->now_ns() + delay_ns, [this, epoch = epoch_, task = std::move(work)] {
            if (epoch == epoch_)
                task();
        });
    };
    busy_ = true;
    std::int64_t delay = (setup_.answer_us + work_us) * 1000;
    later(delay, [this] { busy_ = false; });
    for (const ReplyFaults::Piece& piece : replies.apply(frame)) {
        delay += piece.gap_us * 1000;
        later(delay, [this, bytes = piece.bytes] { surroundings_->send(bytes); });
        delay += byte_time_ns(setup_.line) * static_cast<std::int64_t>(piece.bytes.size());
    }
}

} // namespace sim
