// Finds the frames of the monitor's routines among whatever else a target sends: A5 5A, then a byte without meaning,
// the length (two bytes, high first), and so on to the check.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vrk {

class FrameScan {
public:
    static constexpr std::size_t longest = 1099; // bytes from the one behind the header to the check

    enum class Found {
        nothing, // all bytes are looked through; a frame may have begun
        good, // `frame` holds it
        bad, // its sum is wrong, or it is too short to be one
    };

    // Looks through bytes up to the end of the next frame, and takes what it has looked at off their front. A frame
    // longer than the longest is dropped, and what follows its length is looked through again.
    Found look(std::span<const std::uint8_t>& bytes);
    bool in_frame() const { return state_ == State::frame; } // the header has come, the check has not
    std::span<const std::uint8_t> frame() const { return frame_; } // from the byte behind the header to the check
    void reset(); // begins to search anew

private:
    enum class State { search, half_header, frame };

    State state_ = State::search;
    std::vector<std::uint8_t> frame_;
};

} // namespace vrk
