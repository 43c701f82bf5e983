// Takes a command frame from the line, byte by byte, and checks all that holds for every frame: direction, length,
// end byte, check.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace sim {

struct CommandFrame {
    std::vector<std::uint8_t> bytes; // whole, from 0x46 on; index 5 is the code
    std::size_t check_size = 1;

    std::uint8_t code() const { return bytes[5]; }
    // A parameter by its index in the frame; the first one has index 6.
    std::uint8_t at(std::size_t index) const { return index < bytes.size() ? bytes[index] : 0; }
    std::size_t parameter_count() const { return bytes.size() - 7 - check_size; }
    std::span<const std::uint8_t> from(std::size_t index, std::size_t count) const
    {
        return std::span(bytes).subspan(index, count);
    }
};

class FrameReader {
public:
    explicit FrameReader(bool long_frame)
        : long_frame_(long_frame)
    {
    }

    enum class Outcome {
        nothing, // more bytes are wanted, or the byte stands outside of any frame
        frame, // frame() holds a good one
        bad // complaint() says what was wrong; the frame is dropped
    };
    Outcome take(std::uint8_t byte);
    void reset() { bytes_.clear(); }

    bool inside() const { return !bytes_.empty(); }
    std::size_t count() const { return bytes_.size(); }
    const CommandFrame& frame() const { return frame_; }
    const std::string& complaint() const { return complaint_; }
    std::uint64_t stray_bytes() const { return stray_; } // outside of frames, sync bytes and preambles left out

private:
    Outcome refuse(std::string complaint);
    Outcome judge();

    bool long_frame_;
    std::vector<std::uint8_t> bytes_;
    CommandFrame frame_;
    std::string complaint_;
    std::uint64_t stray_ = 0;
};

} // namespace sim
