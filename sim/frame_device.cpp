#include "sim/frame_device.h"

#include "sim/waveform.h"

#include <utility>

namespace sim {

std::string FrameDevice::violations() const
{
    std::string text;
    for (const std::string& line : violations_)
        text += line + "\n";
    return text;
}

int FrameDevice::frame_count(std::uint8_t code) const
{
    const auto found = counts_.find(code);
    return found == counts_.end() ? 0 : found->second;
}

void FrameDevice::receive(const Arrival& arrival)
{
    if (!listens())
        return;
    if (frame_.empty())
        harmed_ = false;
    harmed_ |= arrival.tampered || arrival.parity_error || arrival.framing_error;
    missed_a_frame_ |= harmed_;
    if (!arrival.parity_error && !arrival.framing_error)
        heard(arrival.value);
}

void FrameDevice::switch_power(bool on)
{
    ++epoch_;
    powered_ = on;
    busy_ = false;
    frame_.clear();
    if (on)
        return;
    surroundings_->stop_sending();
    surroundings_->stop_listening();
}

void FrameDevice::later(std::int64_t delay_ns, std::function<void()> work)
{
    surroundings_->call_at(surroundings_->now_ns() + delay_ns, [this, epoch = epoch_, task = std::move(work)] {
        if (epoch == epoch_)
            task();
    });
}

bool FrameDevice::takes(std::uint8_t code, bool kept)
{
    ++counts_[code];
    if (kept)
        frames_.push_back(frame_);
    if (on_frame)
        on_frame(code);
    if (!powered_)
        return false;
    if (deaf_to[code] <= 0)
        return true;
    --deaf_to[code];
    missed_a_frame_ = true;
    return false;
}

void FrameDevice::send_after_us(std::int64_t us, const Bytes& frame)
{
    busy_ = true;
    std::int64_t delay = us * 1000;
    for (const ReplyFaults::Piece& piece : replies.apply(frame)) {
        delay += piece.gap_us * 1000;
        if (!silent)
            later(delay, [this, bytes = piece.bytes] { surroundings_->send(bytes); });
        delay += byte_time_ns(line()) * static_cast<std::int64_t>(piece.bytes.size());
    }
    later(us * 1000, [this] { busy_ = false; });
}

} // namespace sim
