#include "monitor/frame_scan.h"

#include <numeric>

namespace vrk {

namespace {

constexpr std::uint8_t header_1 = 0xA5;
constexpr std::uint8_t header_2 = 0x5A;
constexpr std::size_t length_end = 3; // bytes with which the length is known
constexpr std::size_t shortest = 17; // the registers that every frame carries, and the check

std::size_t length_of(std::span<const std::uint8_t> frame) { return frame[1] * 256U + frame[2]; }

bool check_good(std::span<const std::uint8_t> frame)
{
    const unsigned sum = std::accumulate(frame.begin(), frame.end() - 1, 0U);
    return frame.back() == (sum & 0xFFU);
}

} // namespace

FrameScan::Found FrameScan::look(std::span<const std::uint8_t>& bytes)
{
    while (!bytes.empty()) {
        const std::uint8_t byte = bytes.front();
        bytes = bytes.subspan(1);
        if (state_ == State::search) {
            state_ = byte == header_1 ? State::half_header : State::search;
            continue;
        }
        if (state_ == State::half_header) {
            frame_.clear();
            if (byte != header_1) // a second one may be the first of a header
                state_ = byte == header_2 ? State::frame : State::search;
            continue;
        }
        frame_.push_back(byte);
        if (frame_.size() < length_end)
            continue;
        const std::size_t length = length_of(frame_);
        if (length > longest) {
            reset();
            continue;
        }
        if (frame_.size() < length)
            continue;
        state_ = State::search;
        return length >= shortest && check_good(frame_) ? Found::good : Found::bad;
    }
    return Found::nothing;
}

void FrameScan::reset()
{
    state_ = State::search;
    frame_.clear();
}

} // namespace vrk
