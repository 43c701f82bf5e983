#include "sim/frame_reader.h"

#include "sim/hex_text.h"

namespace sim {

namespace {

constexpr std::uint8_t header_1 = 0x46;
constexpr std::uint8_t header_2 = 0xB9;
constexpr std::uint8_t to_target = 0x6A;
constexpr std::uint8_t end_byte = 0x16;
constexpr std::uint8_t sync_byte = 0x7F;
constexpr std::uint8_t preamble = 0xFE;
constexpr std::uint8_t rc_test = 0x65; // always carries a 16-bit check
constexpr std::size_t longest = 0x8E; // a long erase frame; a block of 128 bytes has 141

} // namespace

FrameReader::Outcome FrameReader::refuse(std::string complaint)
{
    complaint_ = std::move(complaint);
    reset();
    return Outcome::bad;
}

FrameReader::Outcome FrameReader::take(std::uint8_t byte)
{
    if (bytes_.empty() && byte != header_1) {
        if (byte != sync_byte && byte != preamble)
            ++stray_;
        return Outcome::nothing;
    }
    if (bytes_.size() == 1 && byte != header_2) {
        stray_ += 2;
        bytes_.clear();
        return Outcome::nothing;
    }
    bytes_.push_back(byte);
    if (bytes_.size() == 3 && byte != to_target)
        return refuse("frame: direction byte " + hex(byte, 2) + ", wanted 6A");
    if (bytes_.size() < 5)
        return Outcome::nothing;
    const std::size_t length = bytes_[3] * 256U + bytes_[4];
    const std::size_t shortest = long_frame_ ? 7 : 6;
    if (length < shortest || length > longest)
        return refuse("frame: length " + hex(length, 4) + ", wanted " + hex(shortest, 2) + " to " + hex(longest, 2));
    return bytes_.size() < length + 2 ? Outcome::nothing : judge();
}

FrameReader::Outcome FrameReader::judge()
{
    const std::uint8_t code = bytes_[5];
    const std::size_t check_size = long_frame_ || code == rc_test ? 2 : 1;
    const std::size_t check_at = bytes_.size() - 1 - check_size;
    if (bytes_.back() != end_byte)
        return refuse("frame " + hex(code, 2) + ": ends with " + hex(bytes_.back(), 2) + ", wanted 16");
    unsigned sum = 0;
    for (std::size_t i = 2; i < check_at; ++i)
        sum += bytes_[i];
    const unsigned wanted = check_size == 2 ? sum & 0xFFFFU : sum & 0xFFU;
    const unsigned found = check_size == 2 ? bytes_[check_at] * 256U + bytes_[check_at + 1] : bytes_[check_at];
    const int digits = static_cast<int>(2 * check_size);
    if (found != wanted)
        return refuse(
            "frame " + hex(code, 2) + ": check " + hex(found, digits) + ", its bytes give " + hex(wanted, digits));
    frame_ = {bytes_, check_size};
    reset();
    return Outcome::frame;
}

} // namespace sim
