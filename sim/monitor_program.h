// A user program with the monitor's routines in it: it stops, sends its registers and its memory in frames, and waits.
//
// Each frame goes out until the tool says that it has come: FE AA 50 FA. FE AA 52 FC asks for it again. Behind the last
// one the program stands still until FE AA 54 FE lets it run on; that word releases it from any other frame as well.
// Half a second later it has counted one further, and stops again.
#pragma once

#include "sim/user_program.h"

#include <array>
#include <string>

namespace sim {

class MonitorProgram final : public UserProgram {
public:
    enum class Frame : std::uint8_t { registers, ram, external_ram, data_flash };

    explicit MonitorProgram(const vrk::LineSettings& line);

    // What the frames tell. Special function registers from 0x80 on; the nine that are told apart are taken from them.
    std::array<std::uint8_t, 128> registers{};
    std::array<std::uint8_t, 256> ram{};
    std::array<std::uint8_t, 1024> external_ram{};
    std::array<std::uint8_t, 512> data_flash{};
    std::uint16_t data_flash_address = 0x2000;
    std::vector<Frame> stop{Frame::registers, Frame::ram, Frame::external_ram, Frame::data_flash}; // in this order
    static constexpr std::size_t counter_at = 0x30; // in `ram`: the stops before this one

    // Of the next sendings.
    int damaged = 0; // have a wrong sum
    int cut_off = 0; // break off in their middle

    struct Heard {
        std::uint8_t command;
        std::int64_t at_ns;
    };
    const std::vector<Heard>& commands() const { return commands_; } // good ones, since the last power-up
    const std::vector<std::int64_t>& sendings() const { return sendings_; } // when each frame had gone out, in ns
    int times_run_on() const { return times_run_on_; }
    bool waits() const { return waits_; } // for a word
    const std::string& complaints() const { return complaints_; } // commands that are none; one a line

private:
    void begin() override;
    void hear(std::uint8_t byte) override;
    void obey(std::uint8_t command);
    void send_frame();
    void run_on();
    std::vector<std::uint8_t> frame_bytes(Frame frame) const;

    std::size_t next_ = 0; // in `stop`
    bool waits_ = false;
    std::vector<std::uint8_t> command_; // as far as it has come
    std::vector<Heard> commands_;
    std::vector<std::int64_t> sendings_;
    int times_run_on_ = 0;
    std::string complaints_;
};

} // namespace sim
