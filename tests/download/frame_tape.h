// All that the tool put on the wire, taken apart into its frames: for stories about what a chip was told.
#pragma once

#include "bench.h"

#include <sstream>

namespace vrk {

class FrameTape {
public:
    explicit FrameTape(Bench& bench)
    {
        log_.keep_text = true;
        bench.wire.log = &log_;
    }

    // Frames from 46 to 16, in their order. Sync bytes and the FE in front of short frames are left out.
    std::vector<std::vector<std::uint8_t>> frames() const
    {
        const std::vector<std::uint8_t> all = bytes();
        std::vector<std::vector<std::uint8_t>> found;
        for (std::size_t at = 0; at + 5 < all.size();) {
            const std::size_t size = all[at + 3] * 256U + all[at + 4] + 2U;
            if (all[at] != 0x46 || all[at + 1] != 0xB9 || all[at + 2] != 0x6A || at + size > all.size()) {
                ++at;
                continue;
            }
            const auto begin = all.begin() + static_cast<std::ptrdiff_t>(at);
            found.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(size));
            at += size;
        }
        return found;
    }
    std::vector<std::vector<std::uint8_t>> frames(std::uint8_t code) const
    {
        std::vector<std::vector<std::uint8_t>> found;
        for (auto& frame : frames()) {
            if (frame[5] == code)
                found.push_back(std::move(frame));
        }
        return found;
    }
    std::vector<std::uint8_t> codes() const
    {
        std::vector<std::uint8_t> found;
        for (const auto& frame : frames())
            found.push_back(frame[5]);
        return found;
    }

    // Address and count of each block frame, "0000+80", a repeat with a mark: "0000+80!".
    std::vector<std::string> blocks() const
    {
        std::vector<std::string> found;
        for (const auto& frame : frames()) {
            if (frame[5] != 0x00 && frame[5] != 0x30)
                continue;
            const int address = frame[7] * 65536 + frame[8] * 256 + frame[9];
            std::array<char, 24> text{};
            std::snprintf(text.data(), text.size(), "%04X+%02X%s", static_cast<unsigned>(address),
                static_cast<unsigned>(frame[10] * 256 + frame[11]), frame[5] == 0x30 ? "!" : "");
            found.emplace_back(text.data());
        }
        return found;
    }
    std::vector<std::uint8_t> bytes() const
    {
        std::vector<std::uint8_t> found;
        std::istringstream lines(log_.text());
        std::string time;
        std::string direction;
        std::string value;
        while (lines >> time >> direction >> value) {
            if (direction == "to-target")
                found.push_back(static_cast<std::uint8_t>(std::stoul(value, nullptr, 16)));
        }
        return found;
    }

private:
    sim::EventLog log_;
};

} // namespace vrk
