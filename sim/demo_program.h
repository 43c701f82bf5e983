// The downloader that a user has linked into his code: 5A A5 frames on a line of its own, code flash that it erases and
// writes, and a way into what it has written. It checks each frame by its own code.
#pragma once

#include "sim/faults.h"
#include "sim/flash.h"
#include "sim/target.h"

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

class DemoProgram final : public Target {
public:
    using Bytes = std::vector<std::uint8_t>;

    explicit DemoProgram(const DemoSetup& setup)
        : setup_(setup)
        , flash_(setup.flash_size)
    {
    }

    // Target
    void connect(Surroundings& surroundings) override { surroundings_ = &surroundings; }
    void receive(const Arrival& arrival) override;
    vrk::LineSettings line() const override { return setup_.line; }
    void power(bool on) override;

    Bytes flash(std::size_t first, std::size_t last) const { return flash_.range(first, last + 1); }
    bool runs_code() const { return runs_code_; } // it has been told to leave
    std::string violations() const;
    int frame_count(std::uint8_t code) const;
    const std::vector<Bytes>& frames() const { return frames_; } // whole, 00 for data left as they came
    std::function<void(std::uint8_t code)> on_frame;

    // What goes wrong.
    ReplyFaults replies;
    std::map<std::uint8_t, int> deaf_to; // code: how many frames of it are overheard
    int wrong_sums = 0; // answers to blocks with a wrong sum

private:
    void heard(std::uint8_t byte);
    void take();
    void take_block();
    void answer(Bytes payload, std::int64_t work_us);
    void complain(const std::string& what) { violations_.push_back(what); }

    DemoSetup setup_;
    Flash flash_;
    Surroundings* surroundings_ = nullptr;
    Bytes frame_;
    bool harmed_ = false;
    bool powered_ = false;
    bool busy_ = false;
    bool connected_ = false;
    bool erased_ = false;
    bool runs_code_ = false;
    std::uint64_t epoch_ = 0;
    std::vector<std::string> violations_;
    std::map<std::uint8_t, int> counts_;
    std::vector<Bytes> frames_;
};

} // namespace sim
