// The downloader that a user has linked into his code: 5A A5 frames on a line of its own, code flash that it erases and
// writes, and a way into what it has written. It checks each frame by its own code.
#pragma once

#include "sim/flash.h"
#include "sim/frame_device.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace sim {

struct DemoSetup {
    vrk::LineSettings line{115200, vrk::Parity::none, 8, 1};
    std::uint16_t code = 0x4004; // of its model
    std::uint8_t option = 0xA5;
    std::size_t flash_size = 0x4000;
    std::int64_t answer_us = 300;
    std::int64_t erase_us = 200'000;
    std::int64_t write_us = 7'000; // a frame
};

class DemoProgram final : public FrameDevice {
public:
    explicit DemoProgram(const DemoSetup& setup)
        : setup_(setup)
        , flash_(setup.flash_size)
    {
    }

    // Target
    vrk::LineSettings line() const override { return setup_.line; }
    void power(bool on) override;

    Bytes flash(std::size_t first, std::size_t last) const { return flash_.range(first, last + 1); }
    bool runs_code() const { return runs_code_; } // it has been told to leave

    // What goes wrong, beside what can with every device.
    int wrong_sums = 0; // answers to blocks with a wrong sum

private:
    bool listens() const override { return FrameDevice::listens() && !runs_code_; }
    void heard(std::uint8_t byte) override;
    void take();
    void take_block();
    void answer(Bytes payload, std::int64_t work_us);

    DemoSetup setup_;
    Flash flash_;
    bool connected_ = false;
    bool erased_ = false;
    bool runs_code_ = false;
};

} // namespace sim
